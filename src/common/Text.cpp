#include "common/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "common/Hexadecimal.h"

namespace krv {
namespace {

struct DecodedCharacter {
    char32_t code = 0;
    // Bytes used; 0 when the text does not start with a valid character.
    std::size_t bytes = 0;
};

std::size_t SequenceLength(unsigned char lead) noexcept {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// The first character of a text that isn't empty. Overlong forms, surrogates and codes beyond
// U+10FFFF are not valid.
DecodedCharacter Decode(std::string_view text) noexcept {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || length > text.size()) {
        return {};
    }
    if (length == 1) {
        return {lead, 1};
    }
    char32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t at = 1; at < length; ++at) {
        const auto next = static_cast<unsigned char>(text[at]);
        if ((next & 0xC0U) != 0x80U) {
            return {};
        }
        code = (code << 6U) | (next & 0x3FU);
    }
    constexpr std::array<char32_t, 5> Smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (code < Smallest[length] || code > 0x10FFFF || surrogate) {
        return {};
    }
    return {code, length};
}

constexpr bool IsWithin(char32_t code, char32_t first, char32_t last) noexcept {
    return code >= first && code <= last;
}

bool StartsWithControl(std::string_view text) noexcept {
    const DecodedCharacter character = Decode(text);
    const char32_t code =
        character.bytes == 0 ? static_cast<unsigned char>(text.front()) : character.code;
    return code < 0x20 || IsWithin(code, 0x7F, 0x9F);
}

char32_t UpperGreek(char32_t code) noexcept {
    switch (code) {
        case 0x3AC:
            return 0x386;
        case 0x3AD:
        case 0x3AE:
        case 0x3AF:
            return code - 0x25;
        case 0x3C2:  // the sigma at a word's end shares its capital with the other one
            return 0x3A3;
        case 0x3CC:
            return 0x38C;
        case 0x3CD:
        case 0x3CE:
            return code - 0x3F;
        default:
            return IsWithin(code, 0x3B1, 0x3CB) ? code - 0x20 : code;
    }
}

char32_t UpperCyrillic(char32_t code) noexcept {
    if (IsWithin(code, 0x430, 0x44F)) {
        return code - 0x20;
    }
    if (IsWithin(code, 0x450, 0x45F)) {
        return code - 0x50;
    }
    if (code == 0x4CF) {
        return 0x4C0;
    }
    if (IsWithin(code, 0x4C1, 0x4CE)) {
        return code % 2 == 0 ? code - 1 : code;
    }
    const bool paired = IsWithin(code, 0x460, 0x481) || IsWithin(code, 0x48A, 0x4BF) ||
                        IsWithin(code, 0x4D0, 0x52F);
    return paired && code % 2 != 0 ? code - 1 : code;
}

char32_t UpperLatin(char32_t code) noexcept {
    if (IsWithin(code, 'a', 'z') || (IsWithin(code, 0xE0, 0xFE) && code != 0xF7)) {
        return code - 0x20;
    }
    return code == 0xFF ? 0x178 : code;
}

char32_t Upper(char32_t code) noexcept {
    if (code < 0x100) {
        return UpperLatin(code);
    }
    if (IsWithin(code, 0x386, 0x3CE)) {
        return UpperGreek(code);
    }
    return IsWithin(code, 0x430, 0x52F) ? UpperCyrillic(code) : code;
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view PathIn(std::string_view text) noexcept {
    text = TrimBlanks(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = text.substr(1, text.size() - 2);
    }
    return text;
}

std::size_t CharacterBytes(std::string_view text) noexcept {
    return std::max<std::size_t>(Decode(text).bytes, 1);
}

std::size_t CharacterCount(std::string_view text) noexcept {
    std::size_t count = 0;
    while (!text.empty()) {
        const DecodedCharacter character = Decode(text);
        count += character.code > 0xFFFF ? 2 : 1;
        text.remove_prefix(character.bytes == 0 ? 1 : character.bytes);
    }
    return count;
}

std::string UpperCase(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const DecodedCharacter character = Decode(text);
        const char32_t upper = Upper(character.code);
        const std::size_t bytes = character.bytes == 0 ? 1 : character.bytes;
        if (upper == character.code) {
            result.append(text.substr(0, bytes));
        } else if (upper < 0x80) {
            result += static_cast<char>(upper);
        } else {
            // Every letter above with a counterpart outside ASCII has it below U+0800.
            result += static_cast<char>(0xC0U | (upper >> 6U));
            result += static_cast<char>(0x80U | (upper & 0x3FU));
        }
        text.remove_prefix(bytes);
    }
    return result;
}

bool HasControlCharacters(std::string_view text) noexcept {
    while (!text.empty()) {
        if (StartsWithControl(text)) {
            return true;
        }
        text.remove_prefix(CharacterBytes(text));
    }
    return false;
}

std::string WithoutControlCharacters(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const std::string_view character = text.substr(0, CharacterBytes(text));
        clean += StartsWithControl(text) ? "?" : character;
        text.remove_prefix(character.size());
    }
    return clean;
}

std::string QuotedExcerpt(std::string_view text) {
    constexpr std::size_t Longest = 40;
    std::string quoted = "'";
    for (const char character : text.substr(0, Longest)) {
        const bool isPlain = character >= ' ' && character <= '~';
        quoted += isPlain ? std::string(1, character)
                          : "\\x" + Hexadecimal(static_cast<unsigned char>(character), 2);
    }
    return quoted + (text.size() > Longest ? "...'" : "'");
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
    return UpperCase(left) == UpperCase(right);
}

}  // namespace krv
