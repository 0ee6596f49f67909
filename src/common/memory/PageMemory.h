// PageMemory: a range of address space whose pages come from the system when they are first
// written. The platform's part is in the folders `posix` and `windows`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace krv {

class PageMemory {
 public:
    static constexpr std::size_t MaxBytes = SIZE_MAX / 4;

    PageMemory() = default;
    // Reserves at least `bytes` bytes of address space, none of it usable yet. Throws
    // std::bad_alloc.
    explicit PageMemory(std::size_t bytes);
    PageMemory(PageMemory&& other) noexcept
        : m_data(std::exchange(other.m_data, nullptr)),
          m_bytes(std::exchange(other.m_bytes, 0)),
          m_committed(std::exchange(other.m_committed, 0)) {}
    PageMemory& operator=(PageMemory&& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_bytes, other.m_bytes);
        std::swap(m_committed, other.m_committed);
        return *this;
    }
    ~PageMemory();

    // Makes the first `bytes` bytes usable; they read as zero where never written. Throws
    // std::bad_alloc when the range is shorter or the system has no memory left.
    void Commit(std::size_t bytes);

    // Gives back the pages wholly behind the first `bytes` bytes.
    void Trim(std::size_t bytes) noexcept;

    [[nodiscard]] void* Data() noexcept { return m_data; }
    [[nodiscard]] const void* Data() const noexcept { return m_data; }
    [[nodiscard]] std::size_t Bytes() const noexcept { return m_bytes; }

 private:
    void* m_data = nullptr;
    std::size_t m_bytes = 0;
    std::size_t m_committed = 0;
};

}  // namespace krv
