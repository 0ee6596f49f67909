// What a compiled help file holds, as the system's storage for these files tells.
#pragma once

#include <string>

namespace krv::windows {

// The file is a compiled help and has no page of this path. No where that can't be told.
[[nodiscard]] bool LacksTopic(const std::wstring& file, const std::wstring& topic);

}  // namespace krv::windows
