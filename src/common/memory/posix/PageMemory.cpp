#include "common/memory/PageMemory.h"

#include <sys/mman.h>
#include <unistd.h>

namespace krv {
namespace {

// The size of the large pages that the kernel backs anonymous memory with when asked.
constexpr std::size_t LargePage = std::size_t{2} << 20;

std::size_t PageSize() noexcept {
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

std::size_t RoundUp(std::size_t bytes, std::size_t unit) noexcept {
    return (bytes + unit - 1) / unit * unit;
}

}  // namespace

PageMemory::PageMemory(std::size_t bytes) {
    if (bytes == 0) {
        return;
    }
    m_bytes = RoundUp(bytes, PageSize());
    // A large page more than needed, so that the range can start at a large page's boundary.
    const std::size_t mapped = m_bytes >= LargePage ? m_bytes + LargePage : m_bytes;
    void* base = mmap(nullptr, mapped, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (base == MAP_FAILED) {
        m_bytes = 0;
        throw std::bad_alloc();
    }
    m_data = base;
    if (mapped == m_bytes) {
        return;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(base);
    const std::size_t lead = RoundUp(address, LargePage) - address;
    auto* start = static_cast<char*>(base) + lead;
    if (lead > 0) {
        munmap(base, lead);
    }
    if (lead < LargePage) {
        munmap(start + m_bytes, LargePage - lead);
    }
    m_data = start;
    // Best effort: without large pages the memory is the same, only slower to touch first.
    madvise(m_data, m_bytes, MADV_HUGEPAGE);
}

PageMemory::~PageMemory() {
    if (m_data != nullptr) {
        munmap(m_data, m_bytes);
    }
}

void PageMemory::Commit(std::size_t bytes) {
    if (bytes > m_bytes) {
        throw std::bad_alloc();
    }
    m_committed = bytes > m_committed ? bytes : m_committed;
}

void PageMemory::Trim(std::size_t bytes) noexcept {
    const std::size_t kept = RoundUp(bytes, PageSize());
    if (kept == 0 || kept >= m_bytes) {
        return;
    }
    munmap(static_cast<char*>(m_data) + kept, m_bytes - kept);
    m_bytes = kept;
}

}  // namespace krv
