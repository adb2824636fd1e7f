#include "Platform/ReadAheadLimits.h"

#include <algorithm>

namespace morlaine {

namespace {

constexpr std::size_t bytesNear = std::size_t{6} * 1024 * 1024; // about 100,000 entries
constexpr std::size_t mostBytes = 4 * bytesNear;
constexpr std::size_t mostHelpers = 8;

} // namespace

ReadAheadLimits::ReadAheadLimits(std::size_t helpers)
    : m_mostBytes(bytesNear)
    , m_fewestHelpers(helpers)
    , m_helpers(helpers)
{
}

void ReadAheadLimits::hold(std::size_t bytes)
{
    m_bytes += bytes;
    m_isFull = m_isFull || m_bytes >= m_mostBytes;
}

bool ReadAheadLimits::release(std::size_t bytes)
{
    m_bytes -= bytes;
    if (m_bytes <= bytesNear / 2) {
        m_mostBytes = bytesNear;
    }
    const bool mayGoOn = m_isFull && m_bytes <= m_mostBytes - bytesNear / 2;
    m_isFull = m_isFull && !mayGoOn;
    return mayGoOn;
}

bool ReadAheadLimits::makeRoom()
{
    const std::size_t room = std::min(m_bytes + bytesNear, mostBytes);
    if (!m_isFull || room <= m_mostBytes) {
        return false;
    }
    m_mostBytes = room;
    m_isFull = false;
    return true;
}

void ReadAheadLimits::noteListing(bool hasSlept)
{
    m_helpers = hasSlept ? std::max(m_fewestHelpers, std::min(m_helpers + 1, mostHelpers))
                         : std::max(m_fewestHelpers, m_helpers - 1);
}

} // namespace morlaine
