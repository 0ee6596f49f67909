// Finding: one line of a checkup.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "doctor/InstalledSystem.h"

namespace krv::doctor {

// What is absent was never installed, or isn't needed.
enum class Verdict : std::uint8_t { Good, Absent, Fault };

struct Finding {
    std::string item{};
    Verdict verdict = Verdict::Good;
    // Of programs that it concerns; 0 where it doesn't matter.
    int wordSize = 0;
    // Whom it is installed for: "this user", "all users", or empty.
    std::string owner{};
    std::string state{};
    std::string version{};
    std::string file{};
    // What to do about a fault.
    std::string remedy{};
    // Does it; empty where only the user can. Throws Error.
    std::function<void(InstalledSystem&)> repair{};
};

[[nodiscard]] inline std::string OwnerOf(Scope scope) {
    return scope == Scope::User ? "this user" : "all users";
}

}  // namespace krv::doctor
