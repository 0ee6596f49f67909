#include "common/memory/PageMemory.h"

#include <windows.h>

namespace krv {
namespace {

// Memory is committed in steps of this size, so that a growing buffer asks the system rarely.
constexpr std::size_t CommitStep = std::size_t{4} << 20;
constexpr std::size_t Page = 4096;

std::size_t RoundUp(std::size_t bytes, std::size_t unit) noexcept {
    return (bytes + unit - 1) / unit * unit;
}

}  // namespace

PageMemory::PageMemory(std::size_t bytes) {
    if (bytes == 0) {
        return;
    }
    m_bytes = RoundUp(bytes, Page);
    m_data = VirtualAlloc(nullptr, m_bytes, MEM_RESERVE, PAGE_READWRITE);
    if (m_data == nullptr) {
        m_bytes = 0;
        throw std::bad_alloc();
    }
}

PageMemory::~PageMemory() {
    if (m_data != nullptr) {
        VirtualFree(m_data, 0, MEM_RELEASE);
    }
}

void PageMemory::Commit(std::size_t bytes) {
    if (bytes > m_bytes) {
        throw std::bad_alloc();
    }
    if (bytes <= m_committed) {
        return;
    }
    std::size_t target = RoundUp(bytes, CommitStep);
    target = target > m_bytes ? m_bytes : target;
    if (VirtualAlloc(static_cast<char*>(m_data) + m_committed, target - m_committed, MEM_COMMIT,
                     PAGE_READWRITE) == nullptr) {
        throw std::bad_alloc();
    }
    m_committed = target;
}

void PageMemory::Trim(std::size_t bytes) noexcept {
    const std::size_t kept = RoundUp(bytes, Page);
    if (kept >= m_committed) {
        return;
    }
    VirtualFree(static_cast<char*>(m_data) + kept, m_committed - kept, MEM_DECOMMIT);
    m_committed = kept;
}

}  // namespace krv
