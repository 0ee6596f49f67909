// The program's exit codes, and the error of a wrong command line.
#pragma once

#include <stdexcept>
#include <string>

namespace krv::cli {

namespace ExitCode {
inline constexpr int Done = 0;
inline constexpr int Failed = 1;
inline constexpr int WrongUsage = 2;
inline constexpr int Cancelled = 130;
}  // namespace ExitCode

// The command line can't be carried out; the text says why and what to do instead.
class UsageError final : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

}  // namespace krv::cli
