#include "common/Error.h"

#include <array>
#include <utility>

namespace krv {
namespace {

constexpr const char* CancelText = "Cancel Pressed";

struct Entry {
    std::int32_t number;
    const char* text;
};

constexpr std::array Entries{
    Entry{ErrorNumber::InvalidCall, "Invalid procedure call or argument"},
    Entry{ErrorNumber::Overflow, "Overflow"},
    Entry{ErrorNumber::OutOfMemory, "Out of memory"},
    Entry{ErrorNumber::SubscriptOutOfRange, "Subscript out of range"},
    Entry{ErrorNumber::TypeMismatch, "Type mismatch"},
    Entry{ErrorNumber::InternalError, "Internal error"},
    Entry{ErrorNumber::FileNotFound, "File not found"},
    Entry{ErrorNumber::DeviceInputOutput, "Device I/O error"},
    Entry{ErrorNumber::InputPastEndOfFile, "Input past end of file"},
    Entry{ErrorNumber::PermissionDenied, "Permission denied"},
    Entry{ErrorNumber::PathFileAccess, "Path/File access error"},
    Entry{ErrorNumber::ObjectNotSet, "Object variable or With block variable not set"},
    Entry{ErrorNumber::InvalidFileFormat, "Invalid file format"},
    Entry{ErrorNumber::NoSuchControlElement, "Control array element does not exist"},
    Entry{ErrorNumber::InvalidPropertyValue, "Invalid property value"},
    Entry{ErrorNumber::FormAlreadyShown, "Form already displayed; can't show modally"},
    Entry{ErrorNumber::CannotCreateObject, "ActiveX component can't create object"},
    Entry{ErrorNumber::ActionNotSupported, "Object doesn't support this action"},
    Entry{ErrorNumber::CancelPressed, CancelText},
};

}  // namespace

Error::Error(std::int32_t number) : Error(number, StandardDescription(number)) {}

Error::Error(std::int32_t number, std::string description, std::string source)
    : m_number(number), m_description(std::move(description)), m_source(std::move(source)) {}

bool Error::IsCancel() const noexcept {
    return m_number == ErrorNumber::CancelPressed && m_description == CancelText;
}

std::string StandardDescription(std::int32_t number) {
    for (const Entry& entry : Entries) {
        if (entry.number == number) {
            return entry.text;
        }
    }
    return "Application-defined or object-defined error";
}

Error CancelError() {
    return Error(ErrorNumber::CancelPressed);
}

}  // namespace krv
