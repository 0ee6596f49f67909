// The models that the instrument server supports, and that are simulated.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "common/Joined.h"

namespace krv::suite {

inline constexpr std::array<std::string_view, 6> SupportedModels{"M7718C", "M9920C", "M9920D",
                                                                 "M771XB", "M771XD", "KRV-B"};

// "M7718C, M9920C, ...", for messages.
[[nodiscard]] inline std::string SupportedModelNames() {
    return Joined(SupportedModels);
}

}  // namespace krv::suite
