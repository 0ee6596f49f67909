// Error: what every procedure of the core throws when it fails.
//
// It carries the number, description and source that an automation caller sees. Numbers are the
// system's own (CancelPressed, Unspecified) or the run-time library's classic ones.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace krv {

namespace ErrorNumber {
inline constexpr std::int32_t InvalidCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t InternalError = 51;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t DeviceInputOutput = 57;
inline constexpr std::int32_t InputPastEndOfFile = 62;
inline constexpr std::int32_t PermissionDenied = 70;
inline constexpr std::int32_t PathFileAccess = 75;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t InvalidFileFormat = 321;
inline constexpr std::int32_t NoSuchControlElement = 340;
inline constexpr std::int32_t InvalidPropertyValue = 380;
inline constexpr std::int32_t FormAlreadyShown = 400;
inline constexpr std::int32_t CannotCreateObject = 429;
inline constexpr std::int32_t ActionNotSupported = 445;
// Raised where the user's cancel request ends a piece of work: "Cancel Pressed".
inline constexpr std::int32_t CancelPressed = 1001;
// Raised by the range checks of the download dialog; it shares its number with CancelPressed.
inline constexpr std::int32_t RangeRefused = 1001;
// E_FAIL, as a signed 32-bit number.
inline constexpr std::int32_t Unspecified = static_cast<std::int32_t>(0x80040005u);
}  // namespace ErrorNumber

class Error final : public std::exception {
 public:
    // The description defaults to the run-time library's text for the number.
    explicit Error(std::int32_t number);
    Error(std::int32_t number, std::string description, std::string source = {});

    [[nodiscard]] std::int32_t Number() const noexcept { return m_number; }
    [[nodiscard]] const std::string& Description() const noexcept { return m_description; }
    [[nodiscard]] const std::string& Source() const noexcept { return m_source; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

    [[nodiscard]] bool IsCancel() const noexcept;

 private:
    std::int32_t m_number;
    std::string m_description;
    std::string m_source;
};

// The run-time library's text for a number, e.g. 6 "Overflow"; "Application-defined or
// object-defined error" for a number that it does not know.
[[nodiscard]] std::string StandardDescription(std::int32_t number);

// The error that a cancel request surfaces as: 1001, "Cancel Pressed".
[[nodiscard]] Error CancelError();

}  // namespace krv
