// Conversion of ASCII text against a plain tokenizer over the same buffer, with fast_float's
// conversion and with the C library's. All write to memory that is fresh each time. The whole
// reader, which gets the text from a file in pieces, is compared too, for the record.
#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "benchmarks/Contest.h"
#include "benchmarks/Reading.h"
#include "tests/support/MemoryFiles.h"
#include "waveform/readers/AsciiDataFile.h"
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

void TokenizeWithStrtod(const std::string& text) {
    SampleBuffer<double> values = RoomForValues();
    const char* at = text.c_str();
    for (double& value : values.Span()) {
        char* end = nullptr;
        value = std::strtod(at, &end);
        at = end;
    }
    benchmark::DoNotOptimize(values.Data());
}

void ConvertText(const std::string& text) {
    SampleBuffer<double> values = RoomForValues();
    const waveform::ConvertedNumbers converted = waveform::ConvertNumbers(text, values.Span(), {});
    benchmark::DoNotOptimize(values.Data());
    if (converted.count != Values) {
        throw std::runtime_error("not every value was converted");
    }
}

// Every value as the C library has it.
bool HasTheSameBits(const std::string& text, const SampleBuffer<double>& values) {
    const char* at = text.c_str();
    for (const double value : values.Span()) {
        char* end = nullptr;
        const double expected = std::strtod(at, &end);
        at = end;
        if (std::memcmp(&value, &expected, sizeof value) != 0) {
            return false;
        }
    }
    return values.Size() == Values;
}

void ReadAscii(benchmark::State& state, const char* form, const char* format,
               std::size_t valuesPerLine, double fastFloatTarget) {
    tests::MemoryFiles files;
    const std::string& text = files.Put("data", AsciiText(format, Values, valuesPerLine)).content;
    const Reading reading(files, "data");
    const auto read = [&] { return waveform::ReadAsciiDataFile(reading.File, reading.Services); };
    if (!HasTheSameBits(text, read().values)) {
        state.SkipWithError("other bits than strtod's");
        return;
    }
    const auto preTouch = [] { PreTouch(Values * sizeof(double)); };
    Contest contest;
    contest.Add(
        "reader", [&] { benchmark::DoNotOptimize(read().values.Data()); }, preTouch);
    contest.Add(
        "conversion", [&] { ConvertText(text); }, preTouch);
    contest.Add(
        "fast_float", [&] { TokenizeWithFastFloat(text); }, preTouch);
    contest.Add(
        "strtod", [&] { TokenizeWithStrtod(text); }, preTouch);
    contest.Run(state);
    const std::string what =
        std::string("ASCII, ") + form + ", " + std::to_string(valuesPerLine) + " a line: ";
    TargetTable& table = TargetTable::Shared();
    table.Add(what + "speed against fast_float", Aim::AtLeast, fastFloatTarget,
              contest.SpeedRatio("conversion", "fast_float"),
              TimeText(contest.Seconds("conversion")) + " for 10 million values");
    table.Add(what + "speed against strtod", Aim::AtLeast, 6,
              contest.SpeedRatio("conversion", "strtod"), "bits compared");
    table.Add(what + "the whole reader against fast_float", Aim::ForTheRecord, 0,
              contest.SpeedRatio("reader", "fast_float"),
              TimeText(contest.Seconds("reader")) + " for 10 million values");
}

void Register(const char* form, const char* format, double fastFloatTarget) {
    for (const std::size_t valuesPerLine : {std::size_t{1}, std::size_t{8}}) {
        const std::string name =
            std::string("ReadAscii/") + form + '/' + std::to_string(valuesPerLine);
        benchmark::RegisterBenchmark(name.c_str(),
                                     [=](benchmark::State& state) {
                                         ReadAscii(state, form, format, valuesPerLine,
                                                   fastFloatTarget);
                                     })
            ->Iterations(Contest::Rounds)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

[[maybe_unused]] const bool registered = [] {
    Register("plain decimals", "%.6f", 1.4);
    Register("17 digits", "%.17g", 0.85);
    Register("exponents", "%.9e", 0.85);
    return true;
}();

}  // namespace
}  // namespace krv::benchmarks
