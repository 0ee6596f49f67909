// The readers against their yardsticks: the C library's conversion over the same text, and filling
// fresh memory of the result's size. Each round times both, one right after the other; `ratio` is
// the median of the rounds' ratios, `slowest` and `fastest` their ends.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tests/support/MemoryFiles.h"
#include "waveform/readers/AsciiDataFile.h"
#include "waveform/readers/BinaryDataFiles.h"

namespace krv {
namespace {

constexpr int Rounds = 7;
constexpr std::size_t AsciiValues = 2'000'000;
constexpr std::size_t BinaryPoints = std::size_t{16} << 20;

class NoProgress final : public ReadProgress {
 public:
    void ShowMessage(const std::string&) override {}
    void ShowProgress(std::int32_t, std::int32_t) override {}
    bool IsCancelled() override { return false; }
};

class SteadyClock final : public desktop::Clock {
 public:
    std::uint64_t TickCountMs() override {
        return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                              std::chrono::steady_clock::now().time_since_epoch())
                                              .count());
    }
    int LocalSecondOfDay() override { return 0; }
};

template <class Work>
double SecondsFor(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A file in memory and what the readers need to read it.
struct Bench {
    testing::MemoryFiles files;
    SteadyClock clock;
    NoProgress progress;
    ReadServices services{files, clock, progress, {}};
    FileToRead file{"data", "I-File", "PREFIX"};

    explicit Bench(std::string content) { files.Put("data", std::move(content)); }
    [[nodiscard]] const std::string& Content() { return files.Entries["data"].content; }
};

// Work and yardstick in turn; a ratio above 1 means that the work is the faster of the two.
template <class Work, class Yardstick>
void Compare(benchmark::State& state, std::size_t items, const Work& work,
             const Yardstick& yardstick) {
    std::vector<double> ratios;
    for (auto unused : state) {
        const double limit = SecondsFor(yardstick);
        const double taken = SecondsFor(work);
        state.SetIterationTime(taken);
        ratios.push_back(limit / taken);
    }
    std::sort(ratios.begin(), ratios.end());
    state.counters["ratio"] = ratios[ratios.size() / 2];
    state.counters["slowest"] = ratios.front();
    state.counters["fastest"] = ratios.back();
    state.SetItemsProcessed(static_cast<std::int64_t>(items) * state.iterations());
}

std::string AsciiText(const char* format, int valuesPerLine) {
    std::minstd_rand random(1);
    std::uniform_real_distribution<double> unit(-1, 1);
    std::string text;
    for (std::size_t at = 1; at <= AsciiValues; ++at) {
        char number[64];
        const int length = std::snprintf(number, sizeof number, format, unit(random));
        text.append(number, static_cast<std::size_t>(length));
        text += at % static_cast<std::size_t>(valuesPerLine) == 0 ? "\r\n" : " ";
    }
    return text;
}

void AsciiAgainstStrtod(benchmark::State& state, const char* format, int valuesPerLine) {
    Bench bench(AsciiText(format, valuesPerLine));
    Compare(
        state, AsciiValues,
        [&] {
            const FileSamples samples = ReadAsciiDataFile(bench.file, bench.services);
            benchmark::DoNotOptimize(samples.values.Data());
        },
        [&] {
            SampleBuffer<double> values(AsciiValues);
            values.Resize(AsciiValues);
            const char* at = bench.Content().c_str();
            for (double& value : values.Span()) {
                char* end = nullptr;
                value = std::strtod(at, &end);
                at = end;
            }
            benchmark::DoNotOptimize(values.Data());
        });
}

void BinaryAgainstMemset(benchmark::State& state, SampleFormat format) {
    Bench bench(std::string(BinaryPoints * 2, '\x5A'));
    Compare(
        state, BinaryPoints,
        [&] {
            const FileSamples samples = ReadBinaryDacFile(bench.file, format, bench.services);
            benchmark::DoNotOptimize(samples.values.Data());
        },
        [] {
            SampleBuffer<double> values(BinaryPoints);
            values.Resize(BinaryPoints);
            std::memset(values.Data(), 1, BinaryPoints * sizeof(double));
            benchmark::DoNotOptimize(values.Data());
        });
}

BENCHMARK_CAPTURE(AsciiAgainstStrtod, decimals_one_a_line, "%.6f", 1)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AsciiAgainstStrtod, decimals_eight_a_line, "%.6f", 8)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AsciiAgainstStrtod, seventeen_digits, "%.17g", 1)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BinaryAgainstMemset, little_endian, SampleFormat::LittleEndianSigned)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BinaryAgainstMemset, big_endian, SampleFormat::BigEndianUnsigned)
    ->Iterations(Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv
