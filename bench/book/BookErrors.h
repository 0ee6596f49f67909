// Errors of the workbook application, with the number that its callers know.
#pragma once

#include <string>

#include "common/Error.h"

namespace krv::bench {

namespace BookErrorNumber {
// The application's own errors all have this number.
inline constexpr std::int32_t Application = 1004;
}  // namespace BookErrorNumber

[[nodiscard]] inline Error ApplicationError(const std::string& description) {
    return Error(BookErrorNumber::Application, description);
}

}  // namespace krv::bench
