// Shared libraries that are found at run time and stay loaded. The platform's part is in the
// folders `posix` and `windows`.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace krv::suite {

struct SharedLibrary {
    // OtherBits: it is for programs whose pointers are shorter or longer.
    enum class Outcome : std::uint8_t { Loaded, Missing, OtherBits, Refused };

    Outcome outcome = Outcome::Missing;
    void* handle = nullptr;
    // What the system said of one that it refused.
    std::string reason;
};

// A file's path, or a name that the system looks for.
[[nodiscard]] SharedLibrary LoadSharedLibrary(const std::string& name);
// Null where the library has no such function.
[[nodiscard]] void* FunctionOf(const SharedLibrary& library, const char* name) noexcept;
// The names that VISA libraries have on this system, the most likely first.
[[nodiscard]] std::vector<std::string> UsualVisaLibraries();

}  // namespace krv::suite
