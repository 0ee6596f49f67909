// The ribbon's description, which the host asks for when it loads the add-in.
#pragma once

#include <string>

namespace krv::windows {

// For hosts from version 14 on, and for the one before.
[[nodiscard]] std::string RibbonXml(bool isForVersion14);

}  // namespace krv::windows
