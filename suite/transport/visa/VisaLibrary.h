// VisaLibrary: the library of the interfaces' makers through which instruments at GPIB, USB and
// the like are reached. One that was loaded stays loaded.
#pragma once

#include <string>

#include "suite/transport/visa/VisaApi.h"

namespace krv::suite {

struct VisaLibrary {
    visa::Functions functions{};
    // Why there is none, and what to do; empty where there is one.
    std::string fault;
    // None was asked for by its name, and none is installed.
    bool isAbsent = false;
};

// The library of this file or name; an empty one stands for the one that is installed. May take
// seconds.
[[nodiscard]] VisaLibrary LoadVisa(const std::string& name);

// What a failure means to the person in front of the instrument, and what to do; empty for one
// that has no sentence.
[[nodiscard]] std::string MeaningOf(visa::Status failure);

}  // namespace krv::suite
