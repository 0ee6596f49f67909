// UTF-8 of the core to UTF-16 of the platform and back.
#pragma once

#include <string>
#include <string_view>

namespace krv::windows {

// Bytes that are not valid UTF-8 become U+FFFD.
[[nodiscard]] std::wstring ToWide(std::string_view text);
// Lone surrogates become U+FFFD.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

}  // namespace krv::windows
