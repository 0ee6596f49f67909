#include "simulator/vxi11/Vxi11Link.h"

#include <algorithm>

namespace krv::simulator {

ClientLink::AfterIntake Vxi11Link::Write(std::span<const std::byte> bytes, bool isEnd) {
    ClientLink::AfterIntake all;
    while (!bytes.empty() && !all.disconnect) {
        const auto piece = bytes.first(m_client.PieceSize(bytes.size()));
        const auto after = m_client.TakeIn(piece);
        all.disconnect = after.disconnect;
        all.pause += after.pause;
        bytes = bytes.subspan(piece.size());
    }
    if (isEnd && !all.disconnect) {
        m_client.EndMessage();
    }
    return all;
}

void Vxi11Link::Clear() {
    m_client.Clear();
    m_reply.clear();
}

bool Vxi11Link::IsReadable(std::chrono::milliseconds waited) {
    if (m_reply.empty()) {
        if (auto next = m_client.NextReply()) {
            m_reply = std::move(next->text);
            m_delay = next->delay;
        }
    }
    return !m_reply.empty() && waited >= m_delay;
}

Vxi11Link::Piece Vxi11Link::Read(std::size_t most, std::optional<char> endCharacter) {
    Piece piece;
    std::size_t size = std::min(most, m_reply.size());
    if (const auto at = endCharacter ? m_reply.find(*endCharacter) : std::string::npos; at < size) {
        size = at + 1;
        piece.endsAtCharacter = true;
    }
    piece.text = m_reply.substr(0, size);
    piece.isFull = size == most;
    piece.isEnd = size == m_reply.size();
    m_reply.erase(0, size);
    m_delay = {};
    return piece;
}

}  // namespace krv::simulator
