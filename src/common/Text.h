// Text helpers. Text is UTF-8 everywhere in the core; lengths that a rule counts are characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace krv {

// A line break in messages: carriage return, line feed.
inline constexpr std::string_view CrLf = "\r\n";

// The mark that some editors begin UTF-8 text with.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

// Blanks (U+0020 only) taken off both ends.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text) noexcept;

// The path that a text names: without blanks around it, nor the quotes that file managers put
// around the paths that they copy.
[[nodiscard]] std::string_view PathIn(std::string_view text) noexcept;

// Number of characters as UTF-16 code units, which is how the host applications and the rules
// count. Bytes that are not valid UTF-8 count one each.
[[nodiscard]] std::size_t CharacterCount(std::string_view text) noexcept;

// The bytes of the character that a text starts with, which isn't empty; 1 where it starts with no
// valid UTF-8.
[[nodiscard]] std::size_t CharacterBytes(std::string_view text) noexcept;

// Ordinal upper case: ASCII letters, and the letters of Latin-1, Greek and Cyrillic that have one
// simple upper-case counterpart. Everything else is left alone.
[[nodiscard]] std::string UpperCase(std::string_view text);

// Control characters (U+0000 to U+001F, U+007F to U+009F) are what no line of text holds; bytes
// from 0x80 to 0x9F outside of a character are taken for such, as terminals do.
[[nodiscard]] bool HasControlCharacters(std::string_view text) noexcept;

// The text with "?" for each control character.
[[nodiscard]] std::string WithoutControlCharacters(std::string_view text);

// A piece of a file in single quotes, with what is no printable ASCII as \xNN and cut where it is
// long: bytes of a file must not command the terminal.
[[nodiscard]] std::string QuotedExcerpt(std::string_view text);

[[nodiscard]] bool EqualIgnoringCase(std::string_view left, std::string_view right);

}  // namespace krv
