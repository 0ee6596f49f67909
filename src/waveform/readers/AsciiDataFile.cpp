#include "waveform/readers/AsciiDataFile.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"
#include "waveform/data/FileLook.h"
#include "waveform/readers/AsciiNumbers.h"

namespace krv::waveform {
namespace {

// No number is that long, but files that aren't text may go on without a separator for ever.
constexpr std::size_t LongestToken = std::size_t{1} << 20;

// Enough values to see how many characters they take.
constexpr std::size_t FirstCapacity = 10000;

constexpr std::uint64_t MessageIntervalMs = 100;
constexpr std::int32_t ProgressSteps = 1000;

class AsciiReader {
 public:
    AsciiReader(const FileToRead& file, const ReadServices& services, std::int32_t maximumPoints)
        : m_file(file), m_services(services), m_blocks(file, services) {
        // Every number but the last takes two characters at least.
        const std::uint64_t mostNumbers = m_blocks.FileBytes() / 2 + 1;
        m_most = static_cast<std::size_t>(
            std::min<std::uint64_t>(mostNumbers, static_cast<std::uint64_t>(maximumPoints)));
        m_values.Reset(std::min(m_most, FirstCapacity));
        m_values.Resize(FirstCheckpoint);
    }

    Channel Read() {
        m_services.progress.ShowProgress(ProgressSteps, 0);
        for (auto block = m_blocks.Next(); !block.empty(); block = m_blocks.Next()) {
            // The values have room for what the file held when it was opened.
            if (m_blocks.BytesRead() > m_blocks.FileBytes()) {
                throw FileChangedError();
            }
            ConvertBlock(SkipMark({reinterpret_cast<const char*>(block.data()), block.size()}));
        }
        FinishToken();
        if (m_count == 0) {
            throw ConversionError(NumberTextError::NotNumeric);
        }
        if (m_blocks.BytesRead() != m_blocks.FileBytes()) {
            throw FileChangedError();
        }
        m_blocks.RequireUnchanged();
        m_values.Resize(m_count);
        m_values.TrimToSize();
        m_services.progress.ShowProgress(ProgressSteps, ProgressSteps);
        return {std::move(m_values), m_file.fileName, m_blocks.FileDate(), true};
    }

 private:
    // The text without the byte-order mark that the file may begin with; blocks may cut it.
    std::string_view SkipMark(std::string_view text) {
        while (m_markBytes < Utf8Mark.size() && text.starts_with(Utf8Mark[m_markBytes])) {
            ++m_markBytes;
            text.remove_prefix(1);
        }
        if (!text.empty() && m_markBytes < Utf8Mark.size()) {
            // It was none; what looked like one belongs to the first value.
            m_cutToken.assign(Utf8Mark.substr(0, m_markBytes));
            m_markBytes = Utf8Mark.size();
        }
        return text;
    }

    void ConvertBlock(std::string_view text) {
        if (!m_cutToken.empty()) {
            const std::size_t length = TokenLength(text);
            KeepCutToken(text.substr(0, length));
            text.remove_prefix(length);
            if (text.empty()) {
                return;
            }
            FinishToken();
        }
        for (text = SkipSeparators(text); !text.empty();) {
            const ConvertedNumbers converted =
                ConvertNumbers(text, Room(), m_services.numberFormat);
            m_count += converted.count;
            text = converted.rest;
            if (converted.error != NumberTextError::None) {
                throw ConversionError(converted.error);
            }
            if (!PassCheckpoint(text.size())) {
                break;
            }
        }
        KeepCutToken(text);
    }

    void KeepCutToken(std::string_view part) {
        m_cutToken.append(part);
        if (m_cutToken.size() > LongestToken) {
            throw ConversionError(NumberTextError::NotNumeric);
        }
    }

    // Converts the token that the end of a block had cut.
    void FinishToken() {
        if (m_cutToken.empty()) {
            return;
        }
        const ParsedNumber number = ParseNumber(m_cutToken, m_services.numberFormat);
        if (number.error != NumberTextError::None) {
            throw ConversionError(number.error);
        }
        Room().front() = number.value;
        ++m_count;
        m_cutToken.clear();
        PassCheckpoint(0);
    }

    // Where the next values go, up to the next checkpoint; never empty.
    std::span<double> Room() {
        if (m_count == m_most) {
            throw Error(ErrorNumber::Overflow,
                        "The " + m_file.label + " (" + m_file.fileName + ") contains more than " +
                            std::to_string(m_most) + " points." + std::string(CrLf) +
                            "This exceeds the maximum number of points supported.");
        }
        return m_values.Span().subspan(m_count);
    }

    // False before the count has reached the checkpoint.
    bool PassCheckpoint(std::size_t bytesWaiting) {
        if (static_cast<std::int64_t>(m_count) != m_checkpoint) {
            return false;
        }
        m_checkpoint = NextCheckpoint(m_checkpoint);
        MakeRoom(m_blocks.BytesRead() - bytesWaiting);
        const std::uint64_t now = m_services.clock.TickCountMs();
        if (!m_lastMessageMs || now - *m_lastMessageMs > MessageIntervalMs) {
            m_lastMessageMs = now;
            ShowProgress(m_blocks.BytesRead() - bytesWaiting);
        }
        if (m_services.progress.IsCancelled()) {
            throw CancelError();
        }
        return true;
    }

    // For the values up to the next checkpoint. Address space is reserved for as many as the file
    // will hold when it goes on as it has begun, and a quarter more.
    void MakeRoom(std::uint64_t bytesDone) {
        const std::size_t size = static_cast<std::size_t>(
            std::min<std::uint64_t>(static_cast<std::uint64_t>(m_checkpoint), m_most));
        if (size > m_values.Capacity()) {
            const double expected = 1.25 * static_cast<double>(m_count) *
                                    static_cast<double>(m_blocks.FileBytes()) /
                                    static_cast<double>(bytesDone);
            const auto reserved =
                static_cast<std::size_t>(std::min(expected, static_cast<double>(m_most)));
            SampleBuffer<double> larger(std::max(size, reserved));
            larger.Resize(m_count);
            std::ranges::copy(m_values.Span().first(m_count), larger.Data());
            m_values = std::move(larger);
        }
        m_values.Resize(size);
    }

    void ShowProgress(std::uint64_t bytesDone) {
        m_services.progress.ShowMessage("Reading " + m_file.label + "... (" +
                                        std::to_string(m_count) + " points)");
        const double share =
            static_cast<double>(bytesDone) / static_cast<double>(m_blocks.FileBytes());
        m_services.progress.ShowProgress(ProgressSteps,
                                         static_cast<std::int32_t>(share * ProgressSteps));
    }

    [[nodiscard]] Error ConversionError(NumberTextError error) const {
        const bool outOfRange = error == NumberTextError::OutOfRange;
        const std::int32_t number = outOfRange ? ErrorNumber::Overflow : ErrorNumber::TypeMismatch;
        if (m_file.errorPrefix.empty()) {
            return Error(number);
        }
        const std::string cause =
            outOfRange ? "Overflow in the " + m_file.label +
                             ":  a number must lie between -1.79769313486231E+308 and "
                             "1.79769313486231E+308."
                       : m_file.errorPrefix;
        return Error(number, cause + std::string(CrLf) + "Invalid data at line " +
                                 std::to_string(m_count + 1));
    }

    const FileToRead& m_file;
    const ReadServices& m_services;
    FileBlocks m_blocks;
    // The file holds no more values, or no more can be counted.
    std::size_t m_most = 0;
    SampleBuffer<double> m_values;
    std::size_t m_count = 0;
    std::int64_t m_checkpoint = FirstCheckpoint;
    std::size_t m_markBytes = 0;
    std::string m_cutToken;
    std::optional<std::uint64_t> m_lastMessageMs;
};

}  // namespace

Channel ReadAsciiDataFile(const FileToRead& file, const ReadServices& services,
                          std::int32_t maximumPoints) {
    return AsciiReader(file, services, maximumPoints).Read();
}

}  // namespace krv::waveform
