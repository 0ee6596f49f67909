// BlockWriter: sends arrays of 16-bit codes as definite-length blocks, most significant byte first.
//
// The codes are swapped piece by piece into a buffer of a fixed size, so that an array of any size
// needs no second copy. A block's header is sent on its own, so that the pieces stay aligned.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "suite/scpi/BlockHeader.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

class BlockWriter {
 public:
    static constexpr std::size_t MaxCodes = LongestBlock / sizeof(std::int16_t);
    static constexpr std::size_t PieceCodes = std::size_t{128} << 10;

    // E.g. "#42000" for 1000 codes. Throws Error when the array is too large for a block.
    [[nodiscard]] static std::string Header(std::size_t codeCount);

    // Sends the codes of a block whose header has been sent. Throws what the transport throws; the
    // block is then incomplete.
    void SendCodes(Transport& transport, std::span<const std::int16_t> codes);

 private:
    struct alignas(64) Piece {
        std::array<std::uint16_t, PieceCodes> codes;
    };
    std::unique_ptr<Piece> m_piece;
};

}  // namespace krv::suite
