#include "cli/PrintableStream.h"

#include <string_view>

#include "common/Hexadecimal.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

bool IsInsideOfCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// As many as the first one announces.
std::size_t BytesOfCharacter(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xC0) {
        return 1;
    }
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

}  // namespace

PrintableBuffer::int_type PrintableBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    const char byte = traits_type::to_char_type(character);
    if (!IsInsideOfCharacter(byte)) {
        Release();
    }
    m_begun += byte;
    if (m_begun.size() >= BytesOfCharacter(m_begun.front())) {
        Release();
    }
    return m_sink.good() ? character : traits_type::eof();
}

int PrintableBuffer::sync() {
    Release();
    return m_sink.flush() ? 0 : -1;
}

void PrintableBuffer::Release() {
    for (std::string_view rest = m_begun; !rest.empty();) {
        const std::string_view character = rest.substr(0, CharacterBytes(rest));
        if (HasControlCharacters(character) && character != "\n" && character != "\t") {
            m_sink << "\\x" << Hexadecimal(static_cast<unsigned char>(character.back()), 2);
        } else {
            m_sink << character;
        }
        rest.remove_prefix(character.size());
    }
    m_begun.clear();
}

}  // namespace krv::cli
