#include <array>
#include <cstddef>
#include <numeric>

#include "waveform/checks/DacKernels.h"

#if KRV_HAS_SSE2
#include <emmintrin.h>

namespace krv::waveform::kernels::sse2 {
namespace {

// Values taken per turn: eight codes fill one register.
constexpr std::size_t Stride = 8;

// Rounded by the instruction in the mode in force, which is nearest, halves to even, as everywhere.
__m128i RoundFour(const double* values, __m128d factor, __m128d offset) noexcept {
    const __m128d low = _mm_add_pd(_mm_mul_pd(_mm_loadu_pd(values), factor), offset);
    const __m128d high = _mm_add_pd(_mm_mul_pd(_mm_loadu_pd(values + 2), factor), offset);
    return _mm_unpacklo_epi64(_mm_cvtpd_epi32(low), _mm_cvtpd_epi32(high));
}

__m128i OutsideBounds(__m128i rounded, __m128i low, __m128i high) noexcept {
    return _mm_or_si128(_mm_cmplt_epi32(rounded, low), _mm_cmpgt_epi32(rounded, high));
}

// The low halves as signed numbers, so that packing them saturates nothing.
__m128i LowHalves(__m128i rounded) noexcept {
    return _mm_srai_epi32(_mm_slli_epi32(rounded, 16), 16);
}

template <Finish Step>
__m128i FinishedEight(__m128i codes) noexcept {
    const __m128i zero = _mm_set1_epi16(OffsetZero);
    if constexpr (Step == Finish::OffsetToSigned) {
        return _mm_slli_epi16(_mm_sub_epi16(codes, zero), 2);
    } else if constexpr (Step == Finish::SignedToOffset) {
        const __m128i one = _mm_set1_epi16(1);
        const __m128i limited = _mm_min_epi16(codes, _mm_set1_epi16(LargestToOffset));
        const __m128i odd = _mm_and_si128(_mm_srai_epi16(limited, 2), one);
        const __m128i rounded = _mm_add_epi16(_mm_add_epi16(limited, odd), one);
        return _mm_add_epi16(_mm_srai_epi16(rounded, 2), zero);
    } else {
        return codes;
    }
}

// Several extremes at once keep the loop from waiting for the previous turn.
struct Running {
    __m128d minimum = _mm_set1_pd(std::numeric_limits<double>::infinity());
    __m128d maximum = _mm_set1_pd(-std::numeric_limits<double>::infinity());
    __m128d poison = _mm_setzero_pd();

    void Add(const double* values) noexcept {
        const __m128d value = _mm_loadu_pd(values);
        minimum = _mm_min_pd(value, minimum);
        maximum = _mm_max_pd(value, maximum);
        poison = _mm_add_pd(poison, _mm_sub_pd(value, value));
    }
    void Add(const Running& other) noexcept {
        minimum = _mm_min_pd(other.minimum, minimum);
        maximum = _mm_max_pd(other.maximum, maximum);
        poison = _mm_add_pd(other.poison, poison);
    }
};

Extremes Merged(const Running& running, const Extremes& tail) noexcept {
    const __m128d minimum =
        _mm_min_sd(running.minimum, _mm_unpackhi_pd(running.minimum, running.minimum));
    const __m128d maximum =
        _mm_max_sd(running.maximum, _mm_unpackhi_pd(running.maximum, running.maximum));
    const bool finite =
        _mm_movemask_pd(_mm_cmpeq_pd(running.poison, _mm_setzero_pd())) == 3 && tail.finite;
    const double low = _mm_cvtsd_f64(minimum);
    const double high = _mm_cvtsd_f64(maximum);
    return {(low < tail.minimum ? low : tail.minimum) + 0.0,
            (high > tail.maximum ? high : tail.maximum) + 0.0, finite};
}

template <class Pick>
std::int16_t Reduced(__m128i codes, std::int16_t start, const Pick& pick) noexcept {
    std::array<std::int16_t, Stride> lanes;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(lanes.data()), codes);
    return std::accumulate(lanes.begin(), lanes.end(), start, pick);
}

template <Finish Step>
Converted ConvertBy(std::span<const double> values, const CodeRule& rule,
                    std::span<std::int16_t> codes) noexcept {
    const std::size_t whole = values.size() / Stride * Stride;
    const __m128d factor = _mm_set1_pd(rule.factor);
    const __m128d offset = _mm_set1_pd(rule.offset);
    const __m128i low = _mm_set1_epi32(rule.low);
    const __m128i high = _mm_set1_epi32(rule.high);
    __m128i outside = _mm_setzero_si128();
    __m128i smallest = _mm_set1_epi16(INT16_MAX);
    __m128i largest = _mm_set1_epi16(INT16_MIN);
    for (std::size_t index = 0; index < whole; index += Stride) {
        const __m128i front = RoundFour(values.data() + index, factor, offset);
        const __m128i back = RoundFour(values.data() + index + 4, factor, offset);
        outside = _mm_or_si128(outside, OutsideBounds(front, low, high));
        outside = _mm_or_si128(outside, OutsideBounds(back, low, high));
        const __m128i packed = _mm_packs_epi32(LowHalves(front), LowHalves(back));
        smallest = _mm_min_epi16(smallest, packed);
        largest = _mm_max_epi16(largest, packed);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(codes.data() + index),
                         FinishedEight<Step>(packed));
    }
    Converted result = scalar::Convert(values.subspan(whole), rule, codes.subspan(whole), Step);
    result.good = result.good && _mm_movemask_epi8(outside) == 0;
    const auto lower = [](std::int16_t a, std::int16_t b) { return a < b ? a : b; };
    const auto higher = [](std::int16_t a, std::int16_t b) { return a > b ? a : b; };
    result.smallest = Reduced(smallest, result.smallest, lower);
    result.largest = Reduced(largest, result.largest, higher);
    return result;
}

}  // namespace

Extremes FindExtremes(std::span<const double> values) noexcept {
    const std::size_t whole = values.size() / Stride * Stride;
    Running first, second, third, fourth;
    for (std::size_t index = 0; index < whole; index += Stride) {
        const double* at = values.data() + index;
        first.Add(at);
        second.Add(at + 2);
        third.Add(at + 4);
        fourth.Add(at + 6);
    }
    first.Add(second);
    third.Add(fourth);
    first.Add(third);
    return Merged(first, scalar::FindExtremes(values.subspan(whole)));
}

Converted Convert(std::span<const double> values, const CodeRule& rule,
                  std::span<std::int16_t> codes, Finish finish) noexcept {
    switch (finish) {
        case Finish::OffsetToSigned:
            return ConvertBy<Finish::OffsetToSigned>(values, rule, codes);
        case Finish::SignedToOffset:
            return ConvertBy<Finish::SignedToOffset>(values, rule, codes);
        default:
            return ConvertBy<Finish::None>(values, rule, codes);
    }
}

}  // namespace krv::waveform::kernels::sse2
#endif
