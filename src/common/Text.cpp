#include "common/Text.h"

namespace krv {

std::string_view TrimBlanks(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace krv
