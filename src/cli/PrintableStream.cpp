#include "cli/PrintableStream.h"

#include <utility>

#include "common/Hexadecimal.h"

namespace krv::cli {
namespace {

// In UTF-8 the control characters from 0x80 to 0x9F are this byte and their own.
constexpr unsigned char PairStart = 0xC2;

bool IsControl(unsigned char byte) {
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

}  // namespace

PrintableBuffer::int_type PrintableBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    const auto byte = static_cast<unsigned char>(traits_type::to_char_type(character));
    return Put(byte) ? character : traits_type::eof();
}

int PrintableBuffer::sync() {
    return m_sink.flush() ? 0 : -1;
}

bool PrintableBuffer::Put(unsigned char byte) {
    const bool isSecond = std::exchange(m_isWithinPair, byte == PairStart);
    if (m_isWithinPair && !isSecond) {
        return true;
    }
    if (IsControl(byte) || (isSecond && byte >= 0x80 && byte < 0xA0)) {
        m_sink << "\\x" << Hexadecimal(byte, 2);
        return m_sink.good();
    }
    if (isSecond) {
        m_sink.put(static_cast<char>(PairStart));
    }
    if (!m_isWithinPair) {
        m_sink.put(static_cast<char>(byte));
    }
    return m_sink.good();
}

}  // namespace krv::cli
