// Conversion to DAC codes against its limits: reading the values twice and writing the codes once
// at the speed of memory, and a plain loop with the library's rounding. All on memory that has been
// touched before; items are values, bytes are what the two passes move.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>

#include "common/memory/SampleBuffer.h"
#include "waveform/checks/DacConversion.h"

namespace krv {
namespace {

constexpr std::size_t Points = std::size_t{64} << 20;
constexpr std::size_t BlockSize = 4096;

struct Arrays {
    SampleBuffer<double> values;
    SampleBuffer<std::int16_t> codes;
};

Arrays& Shared() {
    static Arrays arrays = [] {
        Arrays made{SampleBuffer<double>(Points), SampleBuffer<std::int16_t>(Points)};
        made.values.Resize(Points);
        made.codes.Resize(Points);
        std::minstd_rand random(1);
        std::uniform_real_distribution<double> unit(-1, 1);
        std::ranges::generate(made.values.Span(), [&] { return unit(random); });
        std::ranges::fill(made.codes.Span(), std::int16_t{1});
        return made;
    }();
    return arrays;
}

void Account(benchmark::State& state, std::int64_t passes) {
    const auto points = static_cast<std::int64_t>(Points) * state.iterations();
    state.SetItemsProcessed(points);
    state.SetBytesProcessed(points * (8 * passes + 2));
}

template <class Work>
void ForEachBlock(const Arrays& arrays, const Work& work) {
    for (std::size_t first = 0; first < Points; first += BlockSize) {
        work(arrays.values.Span().subspan(first, BlockSize), first);
    }
}

// The limit: a sum, which several accumulators keep from waiting for itself.
double Sum(std::span<const double> values) {
    double sums[8] = {};
    for (std::size_t index = 0; index < values.size(); index += 8) {
        for (std::size_t lane = 0; lane < 8; ++lane) {
            sums[lane] += values[index + lane];
        }
    }
    return sums[0] + sums[1] + sums[2] + sums[3] + sums[4] + sums[5] + sums[6] + sums[7];
}

// Every fourth 16-bit word of the values, so that reading and writing are all there is to it.
void CopyQuarter(std::span<const double> values, std::int16_t* codes) {
    const auto* words = reinterpret_cast<const std::int64_t*>(values.data());
    for (std::size_t index = 0; index < values.size(); ++index) {
        codes[index] = static_cast<std::int16_t>(words[index]);
    }
}

void TwoPassLimit(benchmark::State& state) {
    Arrays& arrays = Shared();
    for (auto unused : state) {
        double sum = 0;
        ForEachBlock(arrays, [&](auto block, std::size_t) { sum += Sum(block); });
        benchmark::DoNotOptimize(sum);
        ForEachBlock(arrays, [&](auto block, std::size_t first) {
            CopyQuarter(block, arrays.codes.Data() + first);
        });
        benchmark::ClobberMemory();
    }
    Account(state, 2);
}

void OnePassLimit(benchmark::State& state) {
    Arrays& arrays = Shared();
    for (auto unused : state) {
        ForEachBlock(arrays, [&](auto block, std::size_t first) {
            CopyQuarter(block, arrays.codes.Data() + first);
        });
        benchmark::ClobberMemory();
    }
    Account(state, 1);
}

void ScaleAndConvert(benchmark::State& state) {
    Arrays& arrays = Shared();
    for (auto unused : state) {
        ValueRange range;
        ForEachBlock(arrays, [&](auto block, std::size_t) {
            benchmark::DoNotOptimize(AddToRange(block, range));
        });
        const Scaling scaling = ScalingFor(range.Peak(), 100, true);
        CodeRange codes;
        ForEachBlock(arrays, [&](auto block, std::size_t first) {
            const auto converted = arrays.codes.Span().subspan(first, BlockSize);
            benchmark::DoNotOptimize(ScaleToCodes(block, scaling, converted, codes));
        });
        benchmark::DoNotOptimize(codes);
    }
    Account(state, 2);
}

void ScaleWithNearbyint(benchmark::State& state) {
    Arrays& arrays = Shared();
    for (auto unused : state) {
        const auto [low, high] = std::ranges::minmax(arrays.values.Span());
        const double factor = 1 / std::max(std::abs(low), std::abs(high)) * 32767.499;
        for (std::size_t index = 0; index < Points; ++index) {
            const double code = std::nearbyint(arrays.values[index] * factor);
            if (!(code >= INT16_MIN && code <= INT16_MAX)) {
                state.SkipWithError("out of range");
                break;
            }
            arrays.codes[index] = static_cast<std::int16_t>(code);
        }
        benchmark::ClobberMemory();
    }
    Account(state, 2);
}

// The values are small here, which costs the same as any others.
void CheckInternalCodes(benchmark::State& state) {
    Arrays& arrays = Shared();
    const FinalStep step = FinalStepFor(state.range(0) == 14, false);
    for (auto unused : state) {
        CodeRange codes;
        ForEachBlock(arrays, [&](auto block, std::size_t first) {
            const auto converted = arrays.codes.Span().subspan(first, BlockSize);
            CodeRange part;
            benchmark::DoNotOptimize(RoundToCodes(block, IBounds, converted, part));
            benchmark::DoNotOptimize(ApplyFinalStep(step, converted, part));
            codes.Add(part);
        });
        benchmark::DoNotOptimize(codes);
    }
    Account(state, 1);
}

BENCHMARK(TwoPassLimit)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ScaleAndConvert)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ScaleWithNearbyint)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(OnePassLimit)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CheckInternalCodes)->Arg(14)->Arg(16)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace krv
