#pragma once

#include "Platform/Memory.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

namespace morlaine {

/// A sequence of plain values that grows by resizeBlock: the system moves large blocks by remapping pages instead of
/// copying them, and unused capacity takes almost no memory. Throws std::bad_alloc and then stays unchanged.
template <typename Value>
class GrowingArray {
    static_assert(std::is_trivially_copyable_v<Value> && std::is_trivially_destructible_v<Value>);

public:
    GrowingArray() = default;
    GrowingArray(GrowingArray&& other) noexcept
        : m_values(std::exchange(other.m_values, nullptr))
        , m_size(std::exchange(other.m_size, 0))
        , m_capacity(std::exchange(other.m_capacity, 0))
        , m_bytes(std::exchange(other.m_bytes, 0))
    {
    }
    GrowingArray& operator=(GrowingArray&& other) noexcept
    {
        std::swap(m_values, other.m_values);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }
    ~GrowingArray() { freeBlock(static_cast<void*>(m_values), m_bytes); }

    [[nodiscard]] std::size_t size() const noexcept { return m_size; }
    [[nodiscard]] bool empty() const noexcept { return m_size == 0; }
    [[nodiscard]] Value* data() noexcept { return m_values; }
    [[nodiscard]] const Value* data() const noexcept { return m_values; }
    [[nodiscard]] Value& operator[](std::size_t index) noexcept { return m_values[index]; }
    [[nodiscard]] const Value& operator[](std::size_t index) const noexcept { return m_values[index]; }
    [[nodiscard]] Value& back() noexcept { return m_values[m_size - 1]; }
    [[nodiscard]] const Value& back() const noexcept { return m_values[m_size - 1]; }
    [[nodiscard]] const Value* begin() const noexcept { return m_values; }
    [[nodiscard]] const Value* end() const noexcept { return m_values + m_size; }

    void push_back(const Value& value)
    {
        if (m_size == m_capacity) {
            const Value copy = value; // it may lie in this array
            makeRoom(1);
            m_values[m_size++] = copy;
        } else {
            m_values[m_size++] = value;
        }
    }
    void pop_back() noexcept { --m_size; }

    /// `values` must not lie in this array.
    void append(std::span<const Value> values)
    {
        if (!values.empty()) {
            makeRoom(values.size());
            std::memcpy(static_cast<void*>(m_values + m_size), values.data(), values.size_bytes());
            m_size += values.size();
        }
    }

    /// New elements have unspecified values.
    void resize(std::size_t size)
    {
        if (size > m_size) {
            makeRoom(size - m_size);
        }
        m_size = size;
    }

    /// An empty array in the memory of `other`, whose pages are already mapped.
    template <typename Other>
    [[nodiscard]] static GrowingArray inMemoryOf(GrowingArray<Other>&& other) noexcept
    {
        GrowingArray values;
        values.setBlock(std::exchange(other.m_values, nullptr), std::exchange(other.m_bytes, 0));
        other.m_size = other.m_capacity = 0;
        return values;
    }

    /// Gives back unused capacity.
    void shrinkToFit() noexcept
    {
        const std::size_t used = m_size * sizeof(Value);
        if (used < m_bytes && used > 0) {
            if (void* shrunk = resizeBlock(static_cast<void*>(m_values), m_bytes, used)) {
                setBlock(shrunk, used);
            }
        }
    }

private:
    template <typename Other>
    friend class GrowingArray;

    void makeRoom(std::size_t more)
    {
        if (more > m_capacity - m_size) {
            grow((m_size + more) * sizeof(Value));
        }
    }

    void grow(std::size_t least)
    {
        const std::size_t bytes = std::max(least, m_bytes + m_bytes / 2);
        void* grown = resizeBlock(static_cast<void*>(m_values), m_bytes, bytes);
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        setBlock(grown, bytes);
    }

    void setBlock(void* block, std::size_t bytes) noexcept
    {
        m_values = static_cast<Value*>(block);
        m_capacity = bytes / sizeof(Value);
        m_bytes = bytes;
    }

    Value* m_values = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
    std::size_t m_bytes = 0; // of the block
};

} // namespace morlaine
