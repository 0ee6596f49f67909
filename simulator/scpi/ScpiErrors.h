// The errors that the generator can note, with the standard's numbers and texts.
#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace krv::simulator {

enum class ScpiError : std::int16_t {
    InvalidCharacter = -101,
    SyntaxError = -102,
    InvalidSeparator = -103,
    DataTypeError = -104,
    ParameterNotAllowed = -108,
    MissingParameter = -109,
    ProgramMnemonicTooLong = -112,
    UndefinedHeader = -113,
    InvalidStringData = -151,
    InvalidBlockData = -161,
    TriggerIgnored = -211,
    SettingsConflict = -221,
    DataOutOfRange = -222,
    TooMuchData = -223,
    IllegalParameterValue = -224,
    OutOfMemory = -225,
    MassStorageError = -250,
    FileNameNotFound = -256,
    FileNameError = -257,
    QueueOverflow = -350,
    QueryDeadlocked = -430
};

struct ScpiErrorEntry {
    ScpiError error;
    std::string_view text;
};

[[nodiscard]] std::span<const ScpiErrorEntry> ScpiErrorTable() noexcept;
[[nodiscard]] std::string_view ScpiErrorText(ScpiError error) noexcept;

// Thrown where a command can't be carried out; it becomes an entry of the error queue. The detail
// says what it was about and may be empty.
class CommandFailure final : public std::exception {
 public:
    explicit CommandFailure(ScpiError error, std::string detail = {})
        : m_error(error), m_detail(std::move(detail)) {}
    [[nodiscard]] ScpiError Code() const noexcept { return m_error; }
    [[nodiscard]] const std::string& Detail() const noexcept { return m_detail; }
    [[nodiscard]] const char* what() const noexcept override { return m_detail.c_str(); }

 private:
    ScpiError m_error;
    std::string m_detail;
};

}  // namespace krv::simulator
