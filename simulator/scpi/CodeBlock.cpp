#include "simulator/scpi/CodeBlock.h"

#include "suite/scpi/ByteOrder.h"

namespace krv::simulator {

void CodeBlock::Append(std::span<const std::byte> bytes) {
    if (m_half && !bytes.empty()) {
        AppendCode(*m_half, bytes.front());
        m_half.reset();
        bytes = bytes.subspan(1);
    }
    const std::size_t start = m_codes.Size();
    const std::size_t count = bytes.size() / sizeof(std::int16_t);
    m_codes.Resize(start + count);
    suite::CopyFromWireOrder(bytes.data(), m_codes.Span().subspan(start));
    if (bytes.size() % sizeof(std::int16_t) != 0) {
        m_half = bytes.back();
    }
}

void CodeBlock::AppendCode(std::byte high, std::byte low) {
    m_codes.Resize(m_codes.Size() + 1);
    m_codes[m_codes.Size() - 1] = static_cast<std::int16_t>(
        std::to_integer<std::uint16_t>(high) << 8 | std::to_integer<std::uint16_t>(low));
}

}  // namespace krv::simulator
