// SampleBuffer: a growable array for samples and codes that is made for many million elements.
//
// Memory is reserved as address space once and taken from the system only where it is written, on
// large pages where the platform offers them, and given back when the buffer is cleared or
// destroyed. Elements are not initialised before they are written. Move-only; one thread.
#pragma once

#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

#include "common/memory/PageMemory.h"

namespace krv {

template <class T>
class SampleBuffer {
    static_assert(std::is_trivially_copyable_v<T>);

 public:
    SampleBuffer() = default;

    // Room for `capacity` elements; what was held is given back. Throws std::bad_alloc.
    explicit SampleBuffer(std::size_t capacity) { Reset(capacity); }

    SampleBuffer(SampleBuffer&& other) noexcept
        : m_memory(std::move(other.m_memory)), m_size(std::exchange(other.m_size, 0)) {}
    SampleBuffer& operator=(SampleBuffer&& other) noexcept {
        m_memory = std::move(other.m_memory);
        m_size = std::exchange(other.m_size, 0);
        return *this;
    }

    void Reset(std::size_t capacity) {
        m_size = 0;
        m_memory = PageMemory();
        if (capacity > PageMemory::MaxBytes / sizeof(T)) {
            throw std::bad_alloc();
        }
        m_memory = PageMemory(capacity * sizeof(T));
    }

    // Makes the first `size` elements writable and part of the buffer; at most the capacity.
    // Throws std::bad_alloc when the system has no memory left.
    void Resize(std::size_t size) {
        m_memory.Commit(size * sizeof(T));
        m_size = size;
    }

    // Gives back the memory behind the last element.
    void TrimToSize() { m_memory.Trim(m_size * sizeof(T)); }

    void Clear() noexcept {
        m_memory = PageMemory();
        m_size = 0;
    }

    [[nodiscard]] std::size_t Size() const noexcept { return m_size; }
    [[nodiscard]] std::size_t Capacity() const noexcept { return m_memory.Bytes() / sizeof(T); }
    [[nodiscard]] bool Empty() const noexcept { return m_size == 0; }

    [[nodiscard]] T* Data() noexcept { return static_cast<T*>(m_memory.Data()); }
    [[nodiscard]] const T* Data() const noexcept { return static_cast<const T*>(m_memory.Data()); }
    [[nodiscard]] std::span<T> Span() noexcept { return {Data(), m_size}; }
    [[nodiscard]] std::span<const T> Span() const noexcept { return {Data(), m_size}; }
    [[nodiscard]] T& operator[](std::size_t index) noexcept { return Data()[index]; }
    [[nodiscard]] const T& operator[](std::size_t index) const noexcept { return Data()[index]; }

 private:
    PageMemory m_memory;
    std::size_t m_size = 0;
};

}  // namespace krv
