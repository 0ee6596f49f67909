// Digits in text as an integer: the second step of number conversion. In two forms with the same
// results, plain code and SSE2.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "common/HasSse2.h"

#if KRV_HAS_SSE2
#include <emmintrin.h>
#endif

namespace krv::waveform {

// What a number consists of in front of its exponent.
struct Mantissa {
    // Its first digit, or the separator that stands in front of that, and the character behind it.
    const char* text = nullptr;
    const char* end = nullptr;
    // Digits in all, and behind the separator.
    unsigned count = 0;
    unsigned fraction = 0;
    // 1 with a separator, 0 without.
    unsigned point = 0;

    [[nodiscard]] unsigned Whole() const noexcept { return count - fraction; }
};

// Digits are taken eight at a time.
class ScalarDigits {
 public:
    static constexpr unsigned WordDigits = 8;

    // 1 to 19 digits, or 20 that begin with a zero. The separator stands within the first word. May
    // read a word behind the mantissa.
    [[nodiscard]] static std::uint64_t Read(const Mantissa& mantissa) noexcept {
        if (mantissa.count <= WordDigits) {
            return First(mantissa, mantissa.count);
        }
        std::uint64_t integer = First(mantissa, WordDigits);
        const char* rest = mantissa.text + WordDigits + mantissa.point;
        unsigned count = mantissa.count - WordDigits;
        if (count > WordDigits) {
            integer = integer * Powers[WordDigits] + Value(Word(rest), WordDigits);
            rest += WordDigits;
            count -= WordDigits;
        }
        return integer * Powers[count] + Value(Word(rest), count);
    }

    // The first `count` digits, 1 to 8. Taken from both sides of the separator together they need
    // one conversion where two, before and behind it, took a fifth longer.
    [[nodiscard]] static std::uint64_t First(const Mantissa& mantissa, unsigned count) noexcept {
        const std::uint64_t word = Word(mantissa.text);
        const std::uint64_t behind =
            mantissa.point != 0 ? ~std::uint64_t{0} << (8 * (mantissa.Whole() % WordDigits)) : 0;
        return Value(word ^ ((word ^ Word(mantissa.text + 1)) & behind), count);
    }

 private:
    static constexpr std::array<std::uint64_t, WordDigits + 1> Powers{
        1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

    static std::uint64_t Word(const char* text) noexcept {
        std::uint64_t word = 0;
        std::memcpy(&word, text, sizeof word);
        return word;
    }

    // The first `count` characters of the word, 1 to 8 digits, as a number. Adding neighbours pair
    // by pair takes three multiplications for all eight.
    static std::uint64_t Value(std::uint64_t word, unsigned count) noexcept {
        // The first digit is the lowest byte. Characters behind the digits leave at the top, zeros
        // come in at the bottom.
        word = (word - 0x3030303030303030) << (64 - 8 * count);
        word = word * 10 + (word >> 8U);
        constexpr std::uint64_t Pairs = 0x000000FF000000FF;
        return ((word & Pairs) * (100 + (std::uint64_t{1000000} << 32U)) +
                ((word >> 16U) & Pairs) * (1 + (std::uint64_t{10000} << 32U))) >>
               32U;
    }
};

#if KRV_HAS_SSE2
// The last sixteen digits at once: a value of 17 digits takes 14.5 ns instead of 16.7, one of nine
// decimals and an exponent 10.7 instead of 13.2. For eight digits the word is as fast.
class Sse2Digits {
 public:
    // As ScalarDigits. May read eight characters in front of the mantissa, too.
    [[nodiscard]] static std::uint64_t Read(const Mantissa& mantissa) noexcept {
        if (mantissa.count <= ScalarDigits::WordDigits) {
            return ScalarDigits::First(mantissa, mantissa.count);
        }
        if (mantissa.count <= Lanes) {
            return Last(mantissa, mantissa.count, mantissa.fraction);
        }
        return ScalarDigits::First(mantissa, mantissa.count - Lanes) * 10'000'000'000'000'000 +
               Last(mantissa, Lanes, std::min(mantissa.fraction, Lanes));
    }

 private:
    static constexpr unsigned Lanes = 16;

    // From `Lanes - n` on, the last n lanes are set to the value.
    template <std::uint8_t Value>
    static constexpr std::array<std::uint8_t, std::size_t{2} * Lanes> Ramp = [] {
        std::array<std::uint8_t, std::size_t{2} * Lanes> ramp{};
        std::fill(ramp.begin() + Lanes, ramp.end(), Value);
        return ramp;
    }();

    static __m128i Load(const void* text) noexcept {
        return _mm_loadu_si128(static_cast<const __m128i*>(text));
    }

    // The last `count` digits, 16 at most, of which `fraction` stand behind the separator.
    static std::uint64_t Last(const Mantissa& mantissa, unsigned count,
                              unsigned fraction) noexcept {
        const char* const text = mantissa.end - Lanes;
        const __m128i isBehind = Load(Ramp<0xFF>.data() + fraction);
        const __m128i characters =
            _mm_or_si128(_mm_and_si128(isBehind, Load(text)),
                         _mm_andnot_si128(isBehind, Load(text - mantissa.point)));
        const __m128i digits = _mm_and_si128(characters, Load(Ramp<0x0F>.data() + count));
        const __m128i fours = _mm_add_epi32(
            _mm_madd_epi16(_mm_and_si128(digits, _mm_set1_epi16(0xFF)), Factors(1000, 10)),
            _mm_madd_epi16(_mm_srli_epi16(digits, 8), Factors(100, 1)));
        const __m128i eights = _mm_madd_epi16(_mm_packs_epi32(fours, fours), Factors(10000, 1));
        const auto high = static_cast<std::uint32_t>(_mm_cvtsi128_si32(eights));
        const auto low = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_epi64(eights, 32)));
        return std::uint64_t{high} * 100'000'000 + low;
    }

    static __m128i Factors(std::int32_t first, std::int32_t second) noexcept {
        return _mm_set1_epi32(second << 16 | first);
    }
};
#endif

}  // namespace krv::waveform
