// Errors of the document application, with the numbers that its callers know.
#pragma once

#include <string>

#include "common/Error.h"

namespace krv::bench {

namespace DocumentErrorNumber {
inline constexpr std::int32_t PropertyIsWriteOnly = 394;
inline constexpr std::int32_t InvalidPicture = 481;
inline constexpr std::int32_t NoDocumentOpen = 4248;
inline constexpr std::int32_t ValueOutOfRange = 4608;
inline constexpr std::int32_t NoSuchMember = 5941;
}  // namespace DocumentErrorNumber

[[nodiscard]] inline Error NoDocumentOpen() {
    return Error(DocumentErrorNumber::NoDocumentOpen,
                 "This command is not available because no document is open.");
}

[[nodiscard]] inline Error ValueOutOfRange() {
    return Error(DocumentErrorNumber::ValueOutOfRange, "Value out of range.");
}

[[nodiscard]] inline Error NoSuchMember() {
    return Error(DocumentErrorNumber::NoSuchMember,
                 "The requested member of the collection does not exist.");
}

}  // namespace krv::bench
