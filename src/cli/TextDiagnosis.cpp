#include "cli/TextDiagnosis.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <span>
#include <string_view>

#include "cli/Files.h"
#include "common/Text.h"
#include "waveform/data/FileLook.h"

namespace krv::cli {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view Separators = " \t\r\n\x1A";
// Longer than any number; what is longer still is told by its beginning.
constexpr std::size_t LongestToken = 4096;

struct Token {
    std::string text;
    // Both from 1; columns count characters.
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

// The text between separators, one piece after the other.
class Tokens {
 public:
    explicit Tokens(std::istream& stream) : m_stream(*stream.rdbuf()) {}

    // Empty at the end.
    Token Next() {
        int character = Take();
        while (character != End && IsSeparator(character)) {
            character = Take();
        }
        Token token{{}, m_line, m_column};
        for (; character != End && !IsSeparator(character); character = Take()) {
            if (token.text.size() < LongestToken) {
                token.text += static_cast<char>(character);
            }
        }
        return token;
    }

 private:
    static constexpr int End = std::char_traits<char>::eof();

    static bool IsSeparator(int character) {
        return Separators.find(static_cast<char>(character)) != std::string_view::npos;
    }
    int Take() {
        if (m_isBehindLine) {
            ++m_line;
            m_column = 0;
        }
        const int character = m_stream.sbumpc();
        // Lines may end with a carriage return alone.
        m_isBehindLine = character == '\n' || (character == '\r' && m_stream.sgetc() != '\n');
        // The bytes of a character behind its first one count nothing.
        const bool isInside = (static_cast<unsigned>(character) & 0xC0U) == 0x80U;
        m_column += !isInside || m_column == 0 ? 1 : 0;
        return character;
    }

    std::streambuf& m_stream;
    std::uint64_t m_line = 1;
    std::uint64_t m_column = 0;
    bool m_isBehindLine = false;
};

bool IsUtf16(std::string_view beginning) {
    const auto zeros = [&](std::size_t first) {
        bool all = beginning.size() >= 4;
        for (std::size_t at = first; at < beginning.size(); at += 2) {
            all = all && beginning[at] == '\0';
        }
        return all;
    };
    return beginning.starts_with("\xFF\xFE"sv) || beginning.starts_with("\xFE\xFF"sv) || zeros(0) ||
           zeros(1);
}

std::string LookOf(std::string_view beginning) {
    if (IsUtf16(beginning)) {
        return "UTF-16 text; save it as UTF-8";
    }
    return std::string(waveform::FileLook(std::as_bytes(std::span(beginning))));
}

bool IsNumber(std::string_view text, NumberFormat format) {
    return ParseNumber(text, format).error == NumberTextError::None;
}

// What text that is no number looks like.
std::string LookOfToken(const std::string& text) {
    const auto commas = std::ranges::count(text, ',');
    if (commas == 1 && IsNumber(text, {','})) {
        return "a number with a decimal comma, or numbers between commas (CSV); write 1.5 for one "
               "and a half, and a blank between numbers";
    }
    const std::size_t first = text.find_first_of(",;");
    if (first != std::string::npos && IsNumber(std::string_view(text).substr(0, first), {})) {
        return "numbers between commas or semicolons (CSV); put blanks in their places";
    }
    return {};
}

}  // namespace

std::string DiagnoseText(const std::string& file, NumberFormat format) {
    std::ifstream stream(PathOf(file), std::ios::binary);
    std::array<char, waveform::FileLookBytes> bytes{};
    stream.read(bytes.data(), bytes.size());
    const std::string_view beginning(bytes.data(), static_cast<std::size_t>(stream.gcount()));
    std::string look = LookOf(beginning);
    stream.clear();
    stream.seekg(beginning.starts_with(Utf8Mark) ? 3 : 0);
    if (!stream) {
        return {};
    }
    Tokens tokens(stream);
    Token token = tokens.Next();
    if (token.text.empty()) {
        return file + " holds no numbers.";
    }
    while (!token.text.empty() && IsNumber(token.text, format)) {
        token = tokens.Next();
    }
    if (token.text.empty()) {
        return {};
    }
    look = look.empty() ? LookOfToken(token.text) : look;
    const bool isLarge = ParseNumber(token.text, format).error == NumberTextError::OutOfRange;
    return file + ", line " + std::to_string(token.line) + ", column " +
           std::to_string(token.column) + ": " + QuotedExcerpt(token.text) +
           (isLarge ? " is too large." : " is not a number.") +
           (look.empty() ? look : " This looks like " + look + '.');
}

}  // namespace krv::cli
