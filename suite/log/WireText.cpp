#include "suite/log/WireText.h"

#include <algorithm>
#include <utility>

#include "common/Hexadecimal.h"

namespace krv::suite {
namespace {

constexpr std::string_view Cut = "...";

}  // namespace

void WireText::Feed(std::span<const std::byte> bytes, const LineReceiver& onLine) {
    while (!bytes.empty()) {
        std::size_t taken = 1;
        if (m_state == State::BlockData) {
            taken = TakeBlockData(bytes);
        } else if (const char character = static_cast<char>(bytes.front()); character != '\n') {
            TakeCharacter(character);
        } else {
            m_state = State::Text;
            m_atStart = true;
            onLine(m_line);
            m_line.clear();
        }
        bytes = bytes.subspan(taken);
    }
}

std::string WireText::TakeRest() {
    if (m_state == State::BlockData) {
        FinishBlock();
    }
    m_state = State::Text;
    m_atStart = true;
    return std::exchange(m_line, {});
}

std::size_t WireText::TakeBlockData(std::span<const std::byte> bytes) {
    const std::size_t count = std::min<std::size_t>(bytes.size(), m_blockLeft);
    m_sum.Add(bytes.first(count));
    m_blockLeft -= static_cast<std::uint32_t>(count);
    if (m_blockLeft == 0) {
        FinishBlock();
    }
    return count;
}

void WireText::FinishBlock() {
    const std::string length = std::to_string(m_blockHeader.Length());
    const std::string received = std::to_string(m_blockHeader.Length() - m_blockLeft);
    Show('<' + (m_blockLeft == 0 ? length : received + " of " + length) + " bytes, CRC-32 " +
         Hexadecimal(m_sum.Value(), 8) + '>');
    m_state = State::Text;
}

void WireText::TakeCharacter(char character) {
    switch (m_state) {
        case State::Text:
            return TakeText(character);
        case State::String:
            ShowCharacter(character);
            if (character == m_quote) {
                m_state = State::Text;
            }
            return;
        case State::BlockHeader:
            return TakeBlockHeader(character);
        case State::BlockData:
            return;
    }
}

void WireText::TakeText(char character) {
    ShowCharacter(character);
    if (character == '"' || character == '\'') {
        m_quote = character;
        m_state = State::String;
    } else if (character == '#' && m_atStart) {
        m_blockHeader = {};
        m_state = State::BlockHeader;
    }
    m_atStart = character == ' ' || character == '\t' || character == ',' || character == ';';
}

void WireText::TakeBlockHeader(char character) {
    const auto progress = m_blockHeader.Take(character);
    if (progress == BlockHeaderReader::Progress::Malformed) {
        m_state = State::Text;
        TakeText(character);
        return;
    }
    ShowCharacter(character);
    if (progress == BlockHeaderReader::Progress::Complete) {
        m_blockLeft = m_blockHeader.Length();
        m_sum = {};
        m_state = State::BlockData;
        if (m_blockLeft == 0) {
            FinishBlock();
        }
    }
}

void WireText::Show(std::string_view text) {
    if (m_line.size() + text.size() <= MaxLineLength) {
        m_line += text;
    } else if (!m_line.ends_with(Cut)) {
        m_line += Cut;
    }
}

void WireText::ShowCharacter(char character) {
    switch (character) {
        case '\\':
            return Show("\\\\");
        case '\r':
            return Show("\\r");
        case '\t':
            return Show("\\t");
        default:
            break;
    }
    if (character >= ' ' && character <= '~') {
        Show({&character, 1});
    } else {
        Show("\\x" + Hexadecimal(static_cast<unsigned char>(character), 2));
    }
}

}  // namespace krv::suite
