// 64 characters of text at once, as masks of what they are: the first step of number conversion.
// In two forms with the same results, plain code and SSE2.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/HasSse2.h"
#include "waveform/readers/AsciiDigits.h"

#if KRV_HAS_SSE2
#include <emmintrin.h>
#endif

namespace krv::waveform {

// Blank, tab, carriage return, line feed and Ctrl-Z.
[[nodiscard]] constexpr bool IsSeparator(char character) noexcept {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n' ||
           character == '\x1A';
}

// Bit n is about character n.
struct WindowMasks {
    static constexpr std::size_t Characters = 64;

    std::uint64_t separators = 0;
    std::uint64_t digits = 0;
};

struct ScalarWindow {
    using DigitReader = ScalarDigits;

    [[nodiscard]] static WindowMasks Of(const char* text) noexcept {
        WindowMasks masks;
        for (std::size_t at = 0; at < WindowMasks::Characters; ++at) {
            const char character = text[at];
            masks.separators |= static_cast<std::uint64_t>(IsSeparator(character)) << at;
            masks.digits |= static_cast<std::uint64_t>(character >= '0' && character <= '9') << at;
        }
        return masks;
    }
};

#if KRV_HAS_SSE2
struct Sse2Window {
    using DigitReader = Sse2Digits;

    [[nodiscard]] static WindowMasks Of(const char* text) noexcept {
        WindowMasks masks;
        for (unsigned at = 0; at < WindowMasks::Characters; at += sizeof(__m128i)) {
            const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
            masks.separators |= MaskOf(Separators(part)) << at;
            masks.digits |= MaskOf(Digits(part)) << at;
        }
        return masks;
    }

 private:
    static __m128i Separators(__m128i part) noexcept {
        const auto equal = [part](char character) {
            return _mm_cmpeq_epi8(part, _mm_set1_epi8(character));
        };
        static_assert('\n' == '\t' + 1);
        return _mm_or_si128(_mm_or_si128(equal(' '), From(part, '\t', 2)),
                            _mm_or_si128(equal('\r'), equal('\x1A')));
    }
    static __m128i Digits(__m128i part) noexcept { return From(part, '0', 10); }
    // The `count` characters from the first on. Comparisons are signed, so these are moved to the
    // lower end of that range.
    static __m128i From(__m128i part, char first, int count) noexcept {
        const auto toLowerEnd = static_cast<char>(INT8_MIN - first);
        return _mm_cmplt_epi8(_mm_add_epi8(part, _mm_set1_epi8(toLowerEnd)),
                              _mm_set1_epi8(static_cast<char>(INT8_MIN + count)));
    }
    static std::uint64_t MaskOf(__m128i flags) noexcept {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(flags));
    }
};
using BestWindow = Sse2Window;
#else
using BestWindow = ScalarWindow;
#endif

}  // namespace krv::waveform
