#include "simulator/vxi11/RecordReader.h"

#include <algorithm>

#include "simulator/vxi11/Xdr.h"

namespace krv::simulator {
namespace {

constexpr std::uint32_t LastFragment = 1U << 31U;
constexpr unsigned HeaderBytes = 4;
constexpr unsigned MostFragments = 4096;

}  // namespace

std::size_t RecordReader::Feed(std::span<const std::byte> bytes) {
    if (m_isComplete) {
        m_isComplete = false;
        m_record.clear();
        m_fragments = 0;
    }
    std::size_t taken = 0;
    while (taken < bytes.size() && !m_isComplete) {
        if (m_left == 0) {
            TakeHeaderByte(bytes[taken++]);
        } else {
            const auto piece = bytes.subspan(taken, std::min(m_left, bytes.size() - taken));
            m_record.insert(m_record.end(), piece.begin(), piece.end());
            m_left -= piece.size();
            taken += piece.size();
            m_isComplete = m_left == 0 && (m_header & LastFragment) != 0;
        }
    }
    return taken;
}

void RecordReader::TakeHeaderByte(std::byte byte) {
    m_header = m_header << 8U | std::to_integer<std::uint32_t>(byte);
    if (++m_headerBytes < HeaderBytes) {
        return;
    }
    m_headerBytes = 0;
    m_left = m_header & ~LastFragment;
    if (m_left > m_most - m_record.size() || ++m_fragments > MostFragments) {
        throw XdrFailure();
    }
    m_isComplete = m_left == 0 && (m_header & LastFragment) != 0;
}

std::string AsRecord(const std::string& message) {
    XdrWriter header;
    header.Number(LastFragment | static_cast<std::uint32_t>(message.size()));
    return header.Bytes() + message;
}

}  // namespace krv::simulator
