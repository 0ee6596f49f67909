// Words in one text, for messages and lists.
#pragma once

#include <string>
#include <string_view>

namespace krv {

// The words with the separator between each two; empty without any.
template <class Words>
[[nodiscard]] std::string Joined(const Words& words, std::string_view separator = ", ") {
    std::string text;
    bool isFirst = true;
    for (const std::string_view word : words) {
        if (!isFirst) {
            text += separator;
        }
        text += word;
        isFirst = false;
    }
    return text;
}

}  // namespace krv
