// 16-bit values on their way from a file to the instrument: arrays that can be shared, and the
// range of what they hold.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

#include "common/memory/SampleBuffer.h"

namespace krv::waveform {

// The smallest and largest code so far; smallest above largest while there is none.
struct CodeRange {
    std::int16_t smallest = INT16_MAX;
    std::int16_t largest = INT16_MIN;

    void Add(CodeRange other) noexcept {
        smallest = std::min(smallest, other.smallest);
        largest = std::max(largest, other.largest);
    }
};

[[nodiscard]] CodeRange RangeOf(std::span<const std::int16_t> codes) noexcept;

// An array that a channel and the codes made of it hold together where nothing had to be changed,
// so that it is in memory once. Copies share the array, which then stays as it is.
class SharedCodes {
 public:
    SharedCodes() = default;
    // Takes the array. Throws std::bad_alloc.
    explicit SharedCodes(SampleBuffer<std::int16_t> codes)
        : m_codes(std::make_shared<SampleBuffer<std::int16_t>>(std::move(codes))),
          m_size(m_codes->Size()) {}

    [[nodiscard]] std::size_t Size() const noexcept { return m_size; }
    [[nodiscard]] bool Empty() const noexcept { return m_size == 0; }
    [[nodiscard]] std::span<const std::int16_t> Span() const noexcept {
        return m_codes ? std::span<const std::int16_t>(m_codes->Data(), m_size)
                       : std::span<const std::int16_t>();
    }
    // The same array without what lies behind its first `count` codes; `count` is at most the size.
    [[nodiscard]] SharedCodes First(std::size_t count) const {
        SharedCodes first = *this;
        first.m_size = count;
        return first;
    }
    // The whole array, for changes; null while something else holds it, too.
    [[nodiscard]] SampleBuffer<std::int16_t>* Exclusive() noexcept {
        return m_codes.use_count() == 1 ? m_codes.get() : nullptr;
    }

 private:
    std::shared_ptr<SampleBuffer<std::int16_t>> m_codes;
    std::size_t m_size = 0;
};

}  // namespace krv::waveform
