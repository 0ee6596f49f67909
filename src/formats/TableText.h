// TableText: the lines of a text file, in UTF-8 whatever the file's encoding is. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "formats/ByteStreams.h"

namespace krv::formats {

enum class Encoding : std::uint8_t { Utf8, Utf16Little, Utf16Big };

// UTF-16 is told by its mark, or without one by every other byte being zero.
[[nodiscard]] Encoding EncodingOf(std::span<const std::byte> beginning) noexcept;

class TableText {
 public:
    explicit TableText(const InputFile& file);

    // A word behind a line may be looked at.
    static constexpr std::size_t SlackBytes = 8;

    // The next line without its end; valid until the next call. False at the end of the file.
    // Throws Error 321 for a line of more than a million bytes.
    [[nodiscard]] bool NextLine(std::string_view& line);
    // The lines that are held as a whole, with their ends; none where they end with a carriage
    // return alone.
    [[nodiscard]] std::string_view WholeLines() const noexcept {
        return std::string_view(m_text).substr(m_at, m_wholeEnd > m_at ? m_wholeEnd - m_at : 0);
    }
    // Goes on behind so many lines of those, which have so many bytes.
    void Skip(std::size_t bytes, std::uint64_t lines) noexcept {
        m_at += bytes;
        m_line += lines;
    }
    // Of the line that was returned last; from 1.
    [[nodiscard]] std::uint64_t Line() const noexcept { return m_line; }
    [[nodiscard]] Encoding TextEncoding() const noexcept { return m_encoding; }

 private:
    // Moves what is left to the front and reads behind it; false where nothing came.
    bool Fill();
    void FillFromUtf16();

    std::string m_file;
    std::unique_ptr<ByteStream> m_stream;
    Encoding m_encoding;
    // Lines end with this: a carriage return where the file has no line feed.
    char m_lineEnd = '\n';
    std::string m_text;
    std::size_t m_at = 0;
    std::size_t m_size = 0;
    // Behind the last line feed.
    std::size_t m_wholeEnd = 0;
    std::uint64_t m_line = 0;
};

}  // namespace krv::formats
