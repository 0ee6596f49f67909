#include "windows/addin/ControlPart.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "common/BagContents.h"
#include "common/Error.h"

namespace krv::windows {
namespace {

constexpr std::string_view Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view Version = "1";

Error Damaged(const std::string& what) {
    return Error(ErrorNumber::InvalidFileFormat, "They are damaged: " + what + ".");
}

// Four digits for three bytes; the last ones are filled up with "=".
std::string ToBase64(std::span<const std::byte> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
        std::uint32_t group = 0;
        for (std::size_t index = 0; index < 3; ++index) {
            group = group << 8 |
                    (index < count ? std::to_integer<std::uint32_t>(bytes[at + index]) : 0);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            text += digit <= count ? Digits[(group >> (18 - 6 * digit)) & 63] : '=';
        }
    }
    return text;
}

constexpr std::array<std::int8_t, 256> DigitValues() {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::size_t value = 0; value < Digits.size(); ++value) {
        values[static_cast<unsigned char>(Digits[value])] = static_cast<std::int8_t>(value);
    }
    return values;
}

std::vector<std::byte> FromBase64(std::string_view text) {
    static constexpr auto Values = DigitValues();
    std::vector<std::byte> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    int bits = 0;
    for (const char digit : text.substr(0, text.find('='))) {
        if (Blanks.find(digit) != std::string_view::npos) {
            continue;
        }
        const std::int8_t value = Values[static_cast<unsigned char>(digit)];
        if (value < 0) {
            throw Damaged("they hold a character that they can't have");
        }
        group = group << 6 | static_cast<std::uint32_t>(value);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<std::byte>(group >> bits & 0xFF));
        }
    }
    return bytes;
}

// The one element with its start tag and its content. A host may have written it with a
// declaration, a prefix, other quotes and blanks.
struct Element {
    explicit Element(std::string_view xml) {
        std::size_t start = xml.find('<');
        while (start != std::string_view::npos && xml.substr(start, 2) == "<?") {
            start = xml.find('<', start + 1);
        }
        const std::size_t end = xml.find('>', start);
        const std::size_t close = xml.rfind("</");
        if (start == std::string_view::npos || end == std::string_view::npos ||
            close == std::string_view::npos || close < end) {
            throw Damaged("their XML has no beginning or no end");
        }
        tag = xml.substr(start + 1, end - start - 1);
        content = xml.substr(end + 1, close - end - 1);
    }

    // Empty without the attribute.
    [[nodiscard]] std::string_view Value(std::string_view attribute) const {
        for (std::size_t at = tag.find(attribute); at != std::string_view::npos;
             at = tag.find(attribute, at + 1)) {
            const std::size_t quote = tag.find_first_not_of(" \t\r\n=", at + attribute.size());
            if (at == 0 || Blanks.find(tag[at - 1]) == std::string_view::npos ||
                quote == std::string_view::npos || (tag[quote] != '"' && tag[quote] != '\'')) {
                continue;
            }
            return tag.substr(quote + 1, tag.find(tag[quote], quote + 1) - quote - 1);
        }
        return {};
    }

    std::string_view tag;
    std::string_view content;
};

}  // namespace

std::string EncodePart(std::span<const std::byte> contents) {
    return std::string("<toolbar xmlns=\"") + PartNamespace + "\" version=\"" +
           std::string(Version) + "\" bytes=\"" + std::to_string(contents.size()) + "\">" +
           ToBase64(contents) + "</toolbar>";
}

std::vector<std::byte> DecodePart(std::string_view xml) {
    const Element element(xml);
    if (const auto version = element.Value("version"); version != Version) {
        throw Error(ErrorNumber::InvalidFileFormat,
                    "They are of version \"" + std::string(version.substr(0, 20)) +
                        "\", which this version of the add-in can't read.");
    }
    if (element.content.size() > 2 * BagLimit::Bytes) {
        throw Damaged("they are too large");
    }
    std::vector<std::byte> contents = FromBase64(element.content);
    if (element.Value("bytes") != std::to_string(contents.size())) {
        throw Damaged("they aren't as long as they were");
    }
    return contents;
}

}  // namespace krv::windows
