// CRC-32 (ISO-HDLC: polynomial 0xEDB88320 reflected, as in zip and PNG) of waveform codes. The sum
// is taken over the codes as little-endian bytes, so it equals the sum of the file a code array is
// stored in. The byte order on the wire doesn't matter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace krv {

class Crc32 {
 public:
    void Add(std::span<const std::byte> bytes) noexcept;
    void AddCodes(std::span<const std::int16_t> codes) noexcept;
    [[nodiscard]] std::uint32_t Value() const noexcept { return ~m_state; }

 private:
    std::uint32_t m_state = 0xFFFFFFFFu;
};

[[nodiscard]] std::uint32_t CodesCrc32(std::span<const std::int16_t> codes) noexcept;

}  // namespace krv
