// Errors of the workbook application, with the numbers that its callers know.
#pragma once

#include <string>

#include "common/Error.h"

namespace krv::bench {

namespace BookErrorNumber {
inline constexpr std::int32_t InvalidCall = 5;
// The application's own errors all have this number.
inline constexpr std::int32_t Application = 1004;
}  // namespace BookErrorNumber

// "Method 'Range' of object '_Application' failed".
[[nodiscard]] inline Error MethodFailed(const std::string& method, const std::string& object) {
    return Error(BookErrorNumber::Application,
                 "Method '" + method + "' of object '" + object + "' failed");
}

[[nodiscard]] inline Error ApplicationError(const std::string& description) {
    return Error(BookErrorNumber::Application, description);
}

}  // namespace krv::bench
