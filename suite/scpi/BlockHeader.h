// The header of a definite-length block: "#", the number of digits in the length (1 to 9), and the
// length in bytes, which stands in front of exactly so many bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace krv::suite {

// The longest block that a header can announce, in bytes.
inline constexpr std::size_t LongestBlock = 999'999'999;

// E.g. "#42000" in front of 2000 bytes, which are at most LongestBlock.
[[nodiscard]] std::string BlockHeader(std::size_t bytes);

// Takes a header apart, character by character, from the one behind the "#" on.
class BlockHeaderReader {
 public:
    enum class Progress : std::uint8_t { Unfinished, Complete, Malformed };

    // Takes the next character. Once a header is complete or malformed there is no next one.
    Progress Take(char character) noexcept;
    // How many digits of the length are still to come; known from the first character on.
    [[nodiscard]] std::size_t DigitsLeft() const noexcept { return m_digitsLeft; }
    // In bytes; of a complete header.
    [[nodiscard]] std::uint32_t Length() const noexcept { return m_length; }

 private:
    // 0 as long as the number of digits isn't known.
    std::uint32_t m_digitsLeft = 0;
    std::uint32_t m_length = 0;
};

}  // namespace krv::suite
