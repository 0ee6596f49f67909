// ASCII letters without regard to case, which is how instruments read names and mnemonics.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace krv::simulator {

[[nodiscard]] constexpr char AsciiUpper(char character) noexcept {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

[[nodiscard]] inline std::string AsciiUpper(std::string_view text) {
    std::string upper(text);
    std::transform(text.begin(), text.end(), upper.begin(),
                   [](char character) { return AsciiUpper(character); });
    return upper;
}

[[nodiscard]] inline bool EqualAnyCase(std::string_view left, std::string_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return AsciiUpper(one) == AsciiUpper(other); });
}

}  // namespace krv::simulator
