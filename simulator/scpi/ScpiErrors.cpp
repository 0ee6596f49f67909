#include "simulator/scpi/ScpiErrors.h"

#include <array>

namespace krv::simulator {
namespace {

constexpr std::array Table{
    ScpiErrorEntry{ScpiError::InvalidCharacter, "Invalid character"},
    ScpiErrorEntry{ScpiError::SyntaxError, "Syntax error"},
    ScpiErrorEntry{ScpiError::InvalidSeparator, "Invalid separator"},
    ScpiErrorEntry{ScpiError::DataTypeError, "Data type error"},
    ScpiErrorEntry{ScpiError::ParameterNotAllowed, "Parameter not allowed"},
    ScpiErrorEntry{ScpiError::MissingParameter, "Missing parameter"},
    ScpiErrorEntry{ScpiError::ProgramMnemonicTooLong, "Program mnemonic too long"},
    ScpiErrorEntry{ScpiError::UndefinedHeader, "Undefined header"},
    ScpiErrorEntry{ScpiError::InvalidStringData, "Invalid string data"},
    ScpiErrorEntry{ScpiError::InvalidBlockData, "Invalid block data"},
    ScpiErrorEntry{ScpiError::TriggerIgnored, "Trigger ignored"},
    ScpiErrorEntry{ScpiError::SettingsConflict, "Settings conflict"},
    ScpiErrorEntry{ScpiError::DataOutOfRange, "Data out of range"},
    ScpiErrorEntry{ScpiError::TooMuchData, "Too much data"},
    ScpiErrorEntry{ScpiError::IllegalParameterValue, "Illegal parameter value"},
    ScpiErrorEntry{ScpiError::OutOfMemory, "Out of memory"},
    ScpiErrorEntry{ScpiError::MassStorageError, "Mass storage error"},
    ScpiErrorEntry{ScpiError::FileNameNotFound, "File name not found"},
    ScpiErrorEntry{ScpiError::FileNameError, "File name error"},
    ScpiErrorEntry{ScpiError::QueueOverflow, "Queue overflow"},
    ScpiErrorEntry{ScpiError::QueryDeadlocked, "Query DEADLOCKED"},
};

}  // namespace

std::span<const ScpiErrorEntry> ScpiErrorTable() noexcept {
    return Table;
}

std::string_view ScpiErrorText(ScpiError error) noexcept {
    for (const ScpiErrorEntry& entry : Table) {
        if (entry.error == error) {
            return entry.text;
        }
    }
    return "Device-specific error";
}

}  // namespace krv::simulator
