#include "suite/scpi/BlockHeader.h"

namespace krv::suite {

std::string BlockHeader(std::size_t bytes) {
    const std::string length = std::to_string(bytes);
    return '#' + std::to_string(length.size()) + length;
}

BlockHeaderReader::Progress BlockHeaderReader::Take(char character) noexcept {
    if (character < '0' || character > '9') {
        return Progress::Malformed;
    }
    const auto digit = static_cast<std::uint32_t>(character - '0');
    if (m_digitsLeft == 0) {
        // "#0" starts a block that ends with a signal that a byte stream doesn't have.
        m_digitsLeft = digit;
        return digit == 0 ? Progress::Malformed : Progress::Unfinished;
    }
    m_length = m_length * 10 + digit;
    return --m_digitsLeft == 0 ? Progress::Complete : Progress::Unfinished;
}

}  // namespace krv::suite
