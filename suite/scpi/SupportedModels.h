// The models that the instrument server supports.
#pragma once

#include <array>
#include <string_view>

namespace krv::suite {

inline constexpr std::array<std::string_view, 6> SupportedModels{"M7718C", "M9920C", "M9920D",
                                                                 "M771XB", "M771XD", "KRV-B"};

}  // namespace krv::suite
