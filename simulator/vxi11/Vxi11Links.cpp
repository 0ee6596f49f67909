#include "simulator/vxi11/Vxi11Links.h"

#include <utility>

namespace krv::simulator {

std::optional<std::uint32_t> Vxi11Links::Open() {
    const std::lock_guard lock(m_mutex);
    if (m_links.size() == Most) {
        return std::nullopt;
    }
    do {
        // Clients take the number for a signed one.
        m_lastNumber = m_lastNumber % INT32_MAX + 1;
    } while (m_links.contains(m_lastNumber));
    m_links[m_lastNumber] = false;
    return m_lastNumber;
}

void Vxi11Links::Close(std::uint32_t link) {
    const std::lock_guard lock(m_mutex);
    m_links.erase(link);
    if (m_lockedBy == link) {
        m_lockedBy = 0;
    }
}

bool Vxi11Links::MayUse(std::uint32_t link) const {
    const std::lock_guard lock(m_mutex);
    return m_lockedBy == 0 || m_lockedBy == link;
}

bool Vxi11Links::Lock(std::uint32_t link) {
    const std::lock_guard lock(m_mutex);
    if (m_lockedBy != 0) {
        return false;
    }
    m_lockedBy = link;
    return true;
}

bool Vxi11Links::Unlock(std::uint32_t link) {
    const std::lock_guard lock(m_mutex);
    if (m_lockedBy != link) {
        return false;
    }
    m_lockedBy = 0;
    return true;
}

bool Vxi11Links::Abort(std::uint32_t link) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_links.find(link);
    if (found == m_links.end()) {
        return false;
    }
    found->second = true;
    return true;
}

bool Vxi11Links::TakeAbort(std::uint32_t link) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_links.find(link);
    return found != m_links.end() && std::exchange(found->second, false);
}

}  // namespace krv::simulator
