// Conversion to DAC codes against its limits: reading the values twice and writing the codes once
// at the speed of memory, and a plain loop with the library's rounding. All on memory that has been
// touched before.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>

#include "benchmarks/Contest.h"
#include "common/memory/SampleBuffer.h"
#include "waveform/checks/DacConversion.h"
#include "waveform/checks/SampleSource.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t Points = std::size_t{64} << 20;
constexpr std::size_t BlockSize = waveform::SampleSource::BlockSize;

struct Arrays {
    SampleBuffer<double> values{Points};
    SampleBuffer<std::int16_t> codes{Points};

    // Values from `low` to `high`.
    Arrays(double low, double high) {
        values.Resize(Points);
        codes.Resize(Points);
        std::minstd_rand random(1);
        std::uniform_real_distribution<double> distribution(low, high);
        std::ranges::generate(values.Span(), [&] { return distribution(random); });
        std::ranges::fill(codes.Span(), std::int16_t{1});
    }
};

template <class Work>
void ForEachBlock(Arrays& arrays, const Work& work) {
    for (std::size_t first = 0; first < Points; first += BlockSize) {
        work(arrays.values.Span().subspan(first, BlockSize),
             arrays.codes.Span().subspan(first, BlockSize));
    }
}

// The limit of reading: a sum, which several accumulators keep from waiting for itself.
double Sum(std::span<const double> values) {
    double sums[8] = {};
    for (std::size_t index = 0; index < values.size(); index += 8) {
        for (std::size_t lane = 0; lane < 8; ++lane) {
            sums[lane] += values[index + lane];
        }
    }
    return sums[0] + sums[1] + sums[2] + sums[3] + sums[4] + sums[5] + sums[6] + sums[7];
}

// The limit of reading and writing: every fourth 16-bit word of the values.
void CopyQuarter(std::span<const double> values, std::span<std::int16_t> codes) {
    const auto* words = reinterpret_cast<const std::int64_t*>(values.data());
    for (std::size_t index = 0; index < values.size(); ++index) {
        codes[index] = static_cast<std::int16_t>(words[index]);
    }
}

void OnePassLimit(Arrays& arrays) {
    ForEachBlock(arrays, [](auto values, auto codes) { CopyQuarter(values, codes); });
    benchmark::ClobberMemory();
}

void TwoPassLimit(Arrays& arrays) {
    double sum = 0;
    ForEachBlock(arrays, [&](auto values, auto) { sum += Sum(values); });
    benchmark::DoNotOptimize(sum);
    OnePassLimit(arrays);
}

void ScaleAndConvert(Arrays& arrays) {
    waveform::ValueRange range;
    ForEachBlock(arrays, [&](auto values, auto) {
        benchmark::DoNotOptimize(waveform::AddToRange(values, range));
    });
    const waveform::Scaling scaling = waveform::ScalingFor(range.Peak(), 100, true);
    waveform::CodeRange all;
    ForEachBlock(arrays, [&](auto values, auto codes) {
        benchmark::DoNotOptimize(waveform::ScaleToCodes(values, scaling, codes, all));
    });
    benchmark::DoNotOptimize(all);
}

bool ScaleWithNearbyint(std::span<const double> values, std::span<std::int16_t> codes) {
    const auto [low, high] = std::ranges::minmax(values);
    const double factor = (1 / std::max(std::abs(low), std::abs(high))) * 1.0 * 32767.499;
    for (std::size_t index = 0; index < Points; ++index) {
        const double code = std::nearbyint(values[index] * factor);
        if (!(code >= INT16_MIN && code <= INT16_MAX)) {
            return false;
        }
        codes[index] = static_cast<std::int16_t>(code);
    }
    return true;
}

bool HasTheSameCodes(Arrays& arrays) {
    ScaleAndConvert(arrays);
    SampleBuffer<std::int16_t> plain(Points);
    plain.Resize(Points);
    return ScaleWithNearbyint(arrays.values.Span(), plain.Span()) &&
           std::ranges::equal(plain.Span(), arrays.codes.Span());
}

void Scale(benchmark::State& state) {
    Arrays arrays(-1, 1);
    if (!HasTheSameCodes(arrays)) {
        state.SkipWithError("other codes than the plain loop's");
        return;
    }
    Contest contest;
    contest.Add("scale", [&] { ScaleAndConvert(arrays); });
    contest.Add("limit", [&] { TwoPassLimit(arrays); });
    contest.Add("nearbyint", [&] {
        benchmark::DoNotOptimize(ScaleWithNearbyint(arrays.values.Span(), arrays.codes.Span()));
    });
    contest.Run(state);
    TargetTable& table = TargetTable::Shared();
    table.Add(
        "minimum, maximum and conversion, 64 Mi points: share of the two-pass bandwidth limit",
        Aim::AtLeast, 0.65, contest.SpeedRatio("scale", "limit"),
        TimeText(contest.Seconds("scale")));
    table.Add("minimum, maximum and conversion: speed against a scalar nearbyint loop",
              Aim::AtLeast, 3.5, contest.SpeedRatio("scale", "nearbyint"), "codes compared");
}

void CheckInternal(Arrays& arrays, waveform::FinalStep step) {
    waveform::CodeRange all;
    ForEachBlock(arrays, [&](auto values, auto codes) {
        benchmark::DoNotOptimize(
            waveform::RoundToFinalCodes(values, waveform::IBounds, step, codes, all));
    });
    benchmark::DoNotOptimize(all);
}

void CheckInternalValues(benchmark::State& state) {
    Arrays arrays(0, 16383);
    Contest contest;
    const auto add = [&](const char* name, bool fourteenBit, bool newModel) {
        contest.Add(name, [&arrays, step = waveform::FinalStepFor(fourteenBit, newModel)] {
            CheckInternal(arrays, step);
        });
    };
    add("16 bit, new model", false, true);
    add("16 bit, old model", false, false);
    add("14 bit, new model", true, true);
    add("14 bit, old model", true, false);
    contest.Add("limit", [&] { OnePassLimit(arrays); });
    contest.Run(state);
    for (const char* name :
         {"16 bit, new model", "16 bit, old model", "14 bit, new model", "14 bit, old model"}) {
        TargetTable::Shared().Add(
            std::string("internal values, ") + name + ": share of the one-pass bandwidth limit",
            Aim::AtLeast, 0.65, contest.SpeedRatio(name, "limit"), TimeText(contest.Seconds(name)));
    }
}

BENCHMARK(Scale)->Iterations(Contest::Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(CheckInternalValues)
    ->Iterations(Contest::Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
