#include "simulator/vxi11/Xdr.h"

namespace krv::simulator {
namespace {

constexpr std::size_t UnitBytes = 4;

// What rounds a length up to whole units.
std::size_t Padding(std::size_t length) {
    return (UnitBytes - length % UnitBytes) % UnitBytes;
}

}  // namespace

std::uint32_t XdrReader::Number() {
    std::uint32_t number = 0;
    for (const std::byte byte : Take(UnitBytes)) {
        number = number << 8U | std::to_integer<std::uint32_t>(byte);
    }
    return number;
}

std::span<const std::byte> XdrReader::Opaque(std::size_t most) {
    const std::size_t length = Number();
    if (length > most) {
        throw XdrFailure();
    }
    const auto bytes = Take(length);
    static_cast<void>(Take(Padding(length)));
    return bytes;
}

std::string_view XdrReader::Text(std::size_t most) {
    const auto bytes = Opaque(most);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::span<const std::byte> XdrReader::Take(std::size_t count) {
    if (count > m_bytes.size()) {
        throw XdrFailure();
    }
    const auto taken = m_bytes.first(count);
    m_bytes = m_bytes.subspan(count);
    return taken;
}

XdrWriter& XdrWriter::Number(std::uint32_t number) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        m_bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return *this;
}

XdrWriter& XdrWriter::Opaque(std::string_view bytes) {
    Number(static_cast<std::uint32_t>(bytes.size()));
    m_bytes += bytes;
    m_bytes.append(Padding(bytes.size()), '\0');
    return *this;
}

XdrWriter& XdrWriter::Written(const XdrWriter& data) {
    m_bytes += data.m_bytes;
    return *this;
}

}  // namespace krv::simulator
