#include "formats/TableText.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/SampleType.h"

namespace krv::formats {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t TextBlock = std::size_t{256} << 10U;
constexpr std::size_t LongestLine = std::size_t{1} << 20U;
constexpr std::size_t LookBytes = 4096;

bool HasZeros(std::span<const std::byte> bytes, std::size_t first) noexcept {
    for (std::size_t at = first; at < bytes.size(); at += 2) {
        if (bytes[at] != std::byte{0}) {
            return false;
        }
    }
    return bytes.size() >= 4;
}

// As UTF-8. Halves of characters beyond 16 bits, which no number has, become question marks.
void AppendUtf16(std::string& text, std::uint16_t unit) {
    const auto add = [&text](unsigned bits) { text += static_cast<char>(bits); };
    if (unit < 0x80) {
        add(unit);
    } else if (unit < 0x800) {
        add(0xC0U | unit >> 6U);
        add(0x80U | (unit & 0x3FU));
    } else if (unit >= 0xD800 && unit < 0xE000) {
        add('?');
    } else {
        add(0xE0U | unit >> 12U);
        add(0x80U | (unit >> 6U & 0x3FU));
        add(0x80U | (unit & 0x3FU));
    }
}

}  // namespace

Encoding EncodingOf(std::span<const std::byte> beginning) noexcept {
    const std::string_view text = TextOf(beginning);
    if (text.starts_with("\xFF\xFE"sv)) {
        return Encoding::Utf16Little;
    }
    if (text.starts_with("\xFE\xFF"sv)) {
        return Encoding::Utf16Big;
    }
    const std::span<const std::byte> pairs = beginning.first(beginning.size() / 2 * 2);
    return HasZeros(pairs, 1)   ? Encoding::Utf16Little
           : HasZeros(pairs, 0) ? Encoding::Utf16Big
                                : Encoding::Utf8;
}

TableText::TableText(const InputFile& file)
    : m_file(file.name), m_stream(file.files.OpenToRead(file.name)) {
    m_encoding = EncodingOf(ReadPiece(file, 0, LookBytes));
    static_cast<void>(Fill());
    if (std::string_view(m_text).substr(0, m_size).starts_with(Utf8Mark)) {
        m_at = Utf8Mark.size();
    }
    const std::string_view look = std::string_view(m_text).substr(0, std::min(m_size, LookBytes));
    if (look.find('\n') == std::string_view::npos && look.find('\r') != std::string_view::npos) {
        m_lineEnd = '\r';
    }
}

bool TableText::NextLine(std::string_view& line) {
    std::size_t searched = m_at;
    for (;;) {
        const char* const from = m_text.data() + searched;
        const auto* const end =
            static_cast<const char*>(std::memchr(from, m_lineEnd, m_size - searched));
        if (end != nullptr) {
            const auto to = static_cast<std::size_t>(end - m_text.data());
            line = std::string_view(m_text).substr(m_at, to - m_at);
            m_at = to + 1;
            break;
        }
        const std::size_t held = m_size - m_at;
        if (held > LongestLine) {
            throw FileFault(m_file + ", line " + std::to_string(m_line + 1),
                            "The line is too long: this is no table.");
        }
        if (!Fill()) {
            line = std::string_view(m_text).substr(m_at, held);
            m_at = m_size;
            if (held == 0) {
                return false;
            }
            break;
        }
        searched = m_at + held;
    }
    ++m_line;
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return true;
}

bool TableText::Fill() {
    m_text.erase(m_size);
    m_text.erase(0, m_at);
    m_at = 0;
    const std::size_t before = m_text.size();
    if (m_encoding != Encoding::Utf8) {
        FillFromUtf16();
    } else {
        m_text.resize(before + TextBlock);
        const auto room = std::as_writable_bytes(std::span(m_text)).subspan(before);
        m_text.resize(before + m_stream->Read(room));
    }
    m_size = m_text.size();
    m_wholeEnd = m_text.rfind('\n') + 1;
    m_text.append(SlackBytes, '\0');
    return m_size > before;
}

void TableText::FillFromUtf16() {
    std::vector<std::byte> bytes(TextBlock);
    const std::size_t count = m_stream->Read(bytes);
    for (std::size_t at = 0; at + 1 < count; at += 2) {
        const auto unit =
            LoadAs<std::uint16_t>(std::span(bytes).subspan(at), m_encoding == Encoding::Utf16Big);
        AppendUtf16(m_text, unit);
    }
}

}  // namespace krv::formats
