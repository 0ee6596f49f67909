// WireText: one direction of a conversation as lines that a person can read.
//
// A definite-length block is abbreviated: `#14ABCD` becomes `#14<4 bytes, CRC-32 DB1720A5>`. Other
// bytes that are no printable ASCII become escapes. It keeps no more than a line's beginning,
// whatever comes in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "common/Crc32.h"
#include "suite/scpi/BlockHeader.h"

namespace krv::suite {

class WireText {
 public:
    using LineReceiver = std::function<void(std::string_view line)>;

    // Takes the next bytes, cut anywhere; each complete line goes to the receiver.
    void Feed(std::span<const std::byte> bytes, const LineReceiver& onLine);
    // The beginning of a line whose end hasn't come; empty when there is none. The next byte starts
    // a new line.
    [[nodiscard]] std::string TakeRest();

 private:
    enum class State : std::uint8_t { Text, String, BlockHeader, BlockData };

    static constexpr std::size_t MaxLineLength = 2000;

    [[nodiscard]] std::size_t TakeBlockData(std::span<const std::byte> bytes);
    void TakeCharacter(char character);
    void TakeText(char character);
    void TakeBlockHeader(char character);
    void FinishBlock();
    void Show(std::string_view text);
    void ShowCharacter(char character);

    State m_state = State::Text;
    std::string m_line;
    char m_quote = '"';
    // A block stands where a parameter or a reply begins.
    bool m_atStart = true;
    BlockHeaderReader m_blockHeader;
    std::uint32_t m_blockLeft = 0;
    Crc32 m_sum;
};

}  // namespace krv::suite
