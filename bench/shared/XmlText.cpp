#include "bench/shared/XmlText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <map>
#include <system_error>
#include <tuple>
#include <utility>

#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr int DeepestElement = 64;
constexpr std::string_view Blanks = " \t\r\n";
constexpr std::uint32_t LargestCharacter = 0x10FFFF;

using Spaces = std::map<std::string, std::string>;

bool StartsName(char character) {
    return std::isalpha(static_cast<unsigned char>(character)) != 0 || character == '_' ||
           (static_cast<unsigned char>(character) & 0x80) != 0;
}

bool ContinuesName(char character) {
    return StartsName(character) || std::isdigit(static_cast<unsigned char>(character)) != 0 ||
           character == '-' || character == '.' || character == ':';
}

void AppendUtf8(std::string& text, std::uint32_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr std::array<std::uint32_t, 4> Leads{0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(Leads[static_cast<std::size_t>(more)] | (code >> (6 * more)));
    for (int shift = 6 * (more - 1); shift >= 0; shift -= 6) {
        text += static_cast<char>(0x80 | ((code >> shift) & 0x3F));
    }
}

class XmlReader {
 public:
    explicit XmlReader(std::string_view text) : m_text(text) {}

    XmlElement Read() {
        Take("\xEF\xBB\xBF");
        SkipMisc();
        XmlElement root = ReadElement({{"xml", "http://www.w3.org/XML/1998/namespace"}}, 0);
        SkipMisc();
        if (m_at != m_text.size()) {
            throw Wrong("something follows the last element");
        }
        return root;
    }

 private:
    [[nodiscard]] Error Wrong(const std::string& what) const {
        const auto line = 1 + std::count(m_text.begin(),
                                         m_text.begin() + static_cast<std::ptrdiff_t>(m_at), '\n');
        return Error(ErrorNumber::InvalidFileFormat, "The XML isn't well formed in line " +
                                                         std::to_string(line) + ": " + what + ".");
    }
    [[nodiscard]] char Next() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
    [[nodiscard]] bool Is(std::string_view what) const {
        return m_text.substr(m_at, what.size()) == what;
    }
    bool Take(std::string_view what) {
        const bool isThere = Is(what);
        m_at += isThere ? what.size() : 0;
        return isThere;
    }
    void Require(std::string_view what) {
        if (!Take(what)) {
            throw Wrong("\"" + std::string(what) + "\" is missing");
        }
    }
    bool SkipBlanks() {
        const std::size_t before = m_at;
        m_at = std::min(m_text.find_first_not_of(Blanks, m_at), m_text.size());
        return m_at != before;
    }
    std::string_view Until(std::string_view end) {
        const std::size_t found = m_text.find(end, m_at);
        if (found == std::string_view::npos) {
            throw Wrong("\"" + std::string(end) + "\" is missing");
        }
        const std::string_view skipped = m_text.substr(m_at, found - m_at);
        m_at = found + end.size();
        return skipped;
    }
    void SkipMisc() {
        while (SkipBlanks() || Is("<!--") || Is("<?")) {
            if (Take("<!--")) {
                Until("-->");
            } else if (Take("<?")) {
                Until("?>");
            }
        }
    }

    std::string ReadName() {
        const std::size_t start = m_at;
        if (!StartsName(Next())) {
            throw Wrong("a name is missing");
        }
        while (m_at < m_text.size() && ContinuesName(m_text[m_at])) {
            ++m_at;
        }
        return std::string(m_text.substr(start, m_at - start));
    }

    void AppendCharacter(std::string& text) {
        if (Next() != '&') {
            text += m_text[m_at++];
            return;
        }
        ++m_at;
        const std::string name(Until(";"));
        static const std::map<std::string, char> Known{
            {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
        if (const auto known = Known.find(name); known != Known.end()) {
            text += known->second;
            return;
        }
        const bool isHexadecimal = name.starts_with("#x");
        const std::string digits = name.starts_with('#') ? name.substr(isHexadecimal ? 2 : 1) : "";
        std::uint32_t code = 0;
        const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(),
                                                    code, isHexadecimal ? 16 : 10);
        if (digits.empty() || failure != std::errc() || end != digits.data() + digits.size() ||
            code == 0 || code > LargestCharacter) {
            throw Wrong("\"&" + name + ";\" is unknown");
        }
        AppendUtf8(text, code);
    }

    std::string ReadValue() {
        const char quote = Next();
        if (quote != '"' && quote != '\'') {
            throw Wrong("a value isn't quoted");
        }
        ++m_at;
        std::string value;
        while (Next() != quote) {
            if (m_at >= m_text.size() || Next() == '<') {
                throw Wrong("a value has no end");
            }
            AppendCharacter(value);
        }
        ++m_at;
        return value;
    }

    // With names as they stand; namespaces come last, since they may be told behind their use.
    std::vector<XmlAttribute> ReadAttributes(Spaces& spaces) {
        std::vector<XmlAttribute> attributes;
        while (SkipBlanks() && StartsName(Next())) {
            XmlAttribute attribute{{}, ReadName(), {}};
            SkipBlanks();
            Require("=");
            SkipBlanks();
            attribute.value = ReadValue();
            const auto isSame = [&](const auto& other) { return other.name == attribute.name; };
            if (std::any_of(attributes.begin(), attributes.end(), isSame)) {
                throw Wrong("the attribute \"" + attribute.name + "\" is there twice");
            }
            attributes.push_back(std::move(attribute));
        }
        std::erase_if(attributes, [&](const XmlAttribute& attribute) {
            const bool isDefault = attribute.name == "xmlns";
            const bool isSpace = isDefault || attribute.name.starts_with("xmlns:");
            if (isSpace) {
                spaces[isDefault ? "" : attribute.name.substr(6)] = attribute.value;
            }
            return isSpace;
        });
        for (XmlAttribute& attribute : attributes) {
            if (attribute.name.find(':') != std::string::npos) {
                std::tie(attribute.space, attribute.name) = Resolved(attribute.name, spaces);
            }
        }
        return attributes;
    }

    [[nodiscard]] std::pair<std::string, std::string> Resolved(const std::string& name,
                                                               const Spaces& spaces) const {
        const std::size_t colon = name.find(':');
        const bool hasPrefix = colon != std::string::npos;
        const std::string prefix = hasPrefix ? name.substr(0, colon) : "";
        const auto space = spaces.find(prefix);
        if (hasPrefix && space == spaces.end()) {
            throw Wrong("the prefix \"" + prefix + "\" is unknown");
        }
        return {space != spaces.end() ? space->second : "",
                hasPrefix ? name.substr(colon + 1) : name};
    }

    XmlElement ReadElement(Spaces spaces, int depth) {
        if (depth > DeepestElement) {
            throw Wrong("the elements lie too deep");
        }
        Require("<");
        const std::string tag = ReadName();
        XmlElement element;
        element.attributes = ReadAttributes(spaces);
        std::tie(element.space, element.name) = Resolved(tag, spaces);
        if (Take("/>")) {
            return element;
        }
        Require(">");
        ReadContent(element, spaces, depth);
        Require(tag);
        SkipBlanks();
        Require(">");
        return element;
    }

    // Up to the name in the end tag.
    void ReadContent(XmlElement& element, const Spaces& spaces, int depth) {
        while (!Take("</")) {
            if (m_at >= m_text.size()) {
                throw Wrong("the element \"" + element.name + "\" has no end");
            }
            if (Take("<!--")) {
                Until("-->");
            } else if (Take("<![CDATA[")) {
                element.text += Until("]]>");
            } else if (Is("<")) {
                element.children.push_back(ReadElement(spaces, depth + 1));
            } else {
                AppendCharacter(element.text);
            }
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

}  // namespace

const std::string* XmlElement::Find(std::string_view attribute) const {
    const auto found = std::find_if(
        attributes.begin(), attributes.end(),
        [&](const XmlAttribute& each) { return each.space.empty() && each.name == attribute; });
    return found != attributes.end() ? &found->value : nullptr;
}

XmlElement ParseXml(std::string_view text) {
    return XmlReader(text).Read();
}

}  // namespace krv::bench
