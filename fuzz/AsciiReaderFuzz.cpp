// The ASCII reader against a token by token conversion with the C library. The first byte of an
// input chooses the size of the blocks and the decimal separator; the rest is the file.
#include <array>
#include <bit>
#include <string>
#include <vector>

#include "common/Error.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/NumberOracle.h"
#include "tests/support/ScriptedDesktop.h"
#include "waveform/readers/AsciiDataFile.h"

namespace krv::fuzz {
namespace {

class NoProgress final : public waveform::PhaseProgress {
 public:
    void ShowMessage(const std::string&) override {}
    void ShowProgress(std::int32_t maximum, std::int32_t value) override {
        Require(value >= 0 && value <= maximum, "progress stays within its range");
    }
    bool IsCancelled() override { return false; }
};

struct Expected {
    std::vector<double> values;
    // The error's number, 0 without one. The error is about the value after the last one.
    std::int32_t error = 0;
};

Expected Oracle(const std::string& content, NumberFormat format) {
    const std::string separators(" \t\r\n\x1A");
    Expected expected;
    std::size_t start = content.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    while ((start = content.find_first_not_of(separators, start)) != std::string::npos) {
        const std::size_t end = std::min(content.find_first_of(separators, start), content.size());
        const ParsedNumber number = OracleNumber(content.substr(start, end - start), format);
        if (number.error != NumberTextError::None) {
            expected.error = number.error == NumberTextError::OutOfRange
                                 ? ErrorNumber::Overflow
                                 : ErrorNumber::TypeMismatch;
            return expected;
        }
        expected.values.push_back(number.value);
        start = end;
    }
    if (expected.values.empty()) {
        expected.error = ErrorNumber::TypeMismatch;
    }
    return expected;
}

void ExpectValues(const waveform::Channel& channel, const Expected& expected) {
    Require(expected.error == 0, "the reader refuses what the oracle refuses");
    Require(channel.Numbers()->Size() == expected.values.size(), "every number is read");
    for (std::size_t at = 0; at < expected.values.size(); ++at) {
        Require(std::bit_cast<std::uint64_t>((*channel.Numbers())[at]) ==
                    std::bit_cast<std::uint64_t>(expected.values[at]),
                "every number has the oracle's bits");
    }
}

void ExpectError(const Error& error, const Expected& expected) {
    const std::string line =
        "\r\nInvalid data at line " + std::to_string(expected.values.size() + 1);
    Require(error.Number() == expected.error, "the error is the oracle's");
    Require(error.Description().ends_with(line), "the error names the first bad value");
}

void CompareWithOracle(const std::string& content, std::size_t blockBytes, NumberFormat format) {
    tests::MemoryFiles files;
    files.Put("data", content);
    tests::ManualClock clock;
    clock.StepMs = 1000;
    NoProgress progress;
    const waveform::ReadServices services{files, clock, progress, format, blockBytes};
    const Expected expected = Oracle(content, format);
    try {
        ExpectValues(waveform::ReadAsciiDataFile({"data", "I-File", "PREFIX"}, services), expected);
    } catch (const Error& error) {
        ExpectError(error, expected);
    }
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    constexpr std::array<std::size_t, 8> BlockBytes{1, 2, 3, 7, 16, 64, 512, 262144};
    const std::string content(reinterpret_cast<const char*>(data) + 1, size - 1);
    const krv::NumberFormat format{(data[0] & 8U) != 0 ? ',' : '.'};
    krv::fuzz::CompareWithOracle(content, BlockBytes[data[0] & 7U], format);
    return 0;
}
