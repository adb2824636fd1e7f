#pragma once

#include <deque>
#include <utility>

namespace morlaine {

/// The levels of a descent; each may depend on the one below it. A level does not move until it is popped. The
/// destructor destroys the topmost level first.
template <typename Level>
class DescentStack {
public:
    DescentStack() = default;
    DescentStack(const DescentStack&) = delete;
    DescentStack& operator=(const DescentStack&) = delete;
    ~DescentStack()
    {
        while (!isEmpty()) {
            m_levels.pop_back();
        }
    }

    [[nodiscard]] bool isEmpty() const noexcept { return m_levels.empty(); }
    [[nodiscard]] Level& top() noexcept { return m_levels.back(); }

    void push(Level&& level) { m_levels.push_back(std::move(level)); }
    Level pop()
    {
        Level level = std::move(m_levels.back());
        m_levels.pop_back();
        return level;
    }

private:
    std::deque<Level> m_levels;
};

} // namespace morlaine
