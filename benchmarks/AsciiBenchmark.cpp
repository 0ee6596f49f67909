// Conversion of ASCII text against a plain tokenizer over the same buffer with fast_float's
// conversion. Both write to memory that is fresh each time. The values must be the C library's.
#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "benchmarks/Contest.h"
#include "benchmarks/Reading.h"
#include "common/memory/SampleBuffer.h"
#include "waveform/readers/AsciiNumbers.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t Values = 10'000'000;

SampleBuffer<double> RoomForValues() {
    SampleBuffer<double> values(Values);
    values.Resize(Values);
    return values;
}

void TokenizeWithFastFloat(const std::string& text) {
    SampleBuffer<double> values = RoomForValues();
    const char* at = text.data();
    const char* const end = at + text.size();
    for (double& value : values.Span()) {
        while (*at == ' ' || *at == '\t' || *at == '\r' || *at == '\n') {
            ++at;
        }
        at = fast_float::from_chars(at, end, value).ptr;
    }
    benchmark::DoNotOptimize(values.Data());
}

void Convert(const std::string& text, SampleBuffer<double>& values) {
    const waveform::ConvertedNumbers converted = waveform::ConvertNumbers(text, values.Span(), {});
    if (converted.count != Values) {
        throw std::runtime_error("not every value was converted");
    }
}

void ConvertText(const std::string& text) {
    SampleBuffer<double> values = RoomForValues();
    Convert(text, values);
    benchmark::DoNotOptimize(values.Data());
}

bool HasTheSameBits(const std::string& text) {
    SampleBuffer<double> values = RoomForValues();
    Convert(text, values);
    const char* at = text.c_str();
    return std::ranges::all_of(values.Span(), [&at](double value) {
        char* end = nullptr;
        const double expected = std::strtod(at, &end);
        at = end;
        return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(expected);
    });
}

void ConvertAscii(benchmark::State& state, const char* form, const char* format,
                  std::size_t valuesPerLine, double target) {
    const std::string text = AsciiText(format, Values, valuesPerLine);
    if (!HasTheSameBits(text)) {
        state.SkipWithError("other bits than strtod's");
        return;
    }
    const auto preTouch = [] { PreTouch(Values * sizeof(double)); };
    Contest contest;
    contest.Add(
        "conversion", [&] { ConvertText(text); }, preTouch);
    contest.Add(
        "fast_float", [&] { TokenizeWithFastFloat(text); }, preTouch);
    contest.Run(state);
    TargetTable::Shared().Add(std::string("ASCII, ") + form + ", " + std::to_string(valuesPerLine) +
                                  " a line: speed against fast_float",
                              Aim::AtLeast, target, contest.SpeedRatio("conversion", "fast_float"),
                              TimeText(contest.Seconds("conversion")) + " for 10 million values");
}

void Register(const char* form, const char* format, double target) {
    for (const std::size_t valuesPerLine : {std::size_t{1}, std::size_t{8}}) {
        const std::string name =
            std::string("ConvertAscii/") + form + '/' + std::to_string(valuesPerLine);
        benchmark::RegisterBenchmark(name.c_str(),
                                     [=](benchmark::State& state) {
                                         ConvertAscii(state, form, format, valuesPerLine, target);
                                     })
            ->Iterations(Contest::Rounds)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

[[maybe_unused]] const bool registered = [] {
    Register("plain decimals", "%.6f", 1.3);
    Register("17 digits", "%.17g", 1.0);
    Register("exponents", "%.9e", 1.0);
    Register("19 digits and exponents", "%.18e", 1.0);
    return true;
}();

}  // namespace
}  // namespace krv::benchmarks
