#include "simulator/scpi/HeaderPattern.h"

#include <algorithm>

#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {
namespace {

bool IsLower(char character) {
    return character >= 'a' && character <= 'z';
}

bool MnemonicMatches(std::string_view pattern, std::string_view mnemonic) {
    const auto lower = std::find_if(pattern.begin(), pattern.end(), IsLower);
    const auto shortLength = static_cast<std::size_t>(lower - pattern.begin());
    return EqualAnyCase(mnemonic, pattern) ||
           EqualAnyCase(mnemonic, pattern.substr(0, shortLength));
}

struct Node {
    std::string_view mnemonic;
    bool optional = false;
};

// Takes the first node off a pattern without its query mark.
Node TakePatternNode(std::string_view& pattern) {
    Node node;
    node.optional = pattern.starts_with('[');
    pattern.remove_prefix(node.optional ? 1 : 0);
    pattern.remove_prefix(pattern.starts_with(':') ? 1 : 0);
    const auto end = std::min(pattern.find_first_of(":[]"), pattern.size());
    node.mnemonic = pattern.substr(0, end);
    pattern.remove_prefix(node.optional ? pattern.find(']') + 1 : end);
    return node;
}

bool NodesMatch(std::string_view pattern, std::string_view header) {
    while (!pattern.empty()) {
        const Node node = TakePatternNode(pattern);
        const auto end = std::min(header.find(':'), header.size());
        if (MnemonicMatches(node.mnemonic, header.substr(0, end))) {
            header.remove_prefix(end);
            if (header.starts_with(':')) {
                header.remove_prefix(1);
                if (header.empty()) {
                    return false;
                }
            }
        } else if (!node.optional) {
            return false;
        }
    }
    return header.empty();
}

bool TakeQueryMark(std::string_view& text) {
    const bool query = text.ends_with('?');
    text.remove_suffix(query ? 1 : 0);
    return query;
}

}  // namespace

bool HeaderMatches(std::string_view pattern, std::string_view header) noexcept {
    if (header.starts_with(':')) {
        header.remove_prefix(1);
    }
    if (TakeQueryMark(pattern) != TakeQueryMark(header)) {
        return false;
    }
    return NodesMatch(pattern, header);
}

}  // namespace krv::simulator
