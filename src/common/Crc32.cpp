#include "common/Crc32.h"

#include <array>

namespace krv {
namespace {

// Eight tables: table k advances a byte over k further zero bytes, so eight bytes go in one step.
using Tables = std::array<std::array<std::uint32_t, 256>, 8>;

constexpr Tables MakeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t state = byte;
        for (int bit = 0; bit < 8; ++bit) {
            state = (state >> 1) ^ ((state & 1U) != 0 ? 0xEDB88320U : 0U);
        }
        tables[0][byte] = state;
    }
    for (std::size_t table = 1; table < tables.size(); ++table) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t previous = tables[table - 1][byte];
            tables[table][byte] = (previous >> 8) ^ tables[0][previous & 0xFFU];
        }
    }
    return tables;
}

constexpr Tables CrcTables = MakeTables();

std::uint32_t AddByte(std::uint32_t state, std::uint32_t byte) noexcept {
    return (state >> 8) ^ CrcTables[0][(state ^ byte) & 0xFFU];
}

// Four codes, eight bytes, in one step.
std::uint32_t AddFourCodes(std::uint32_t state, const std::int16_t* codes) noexcept {
    const auto word = [codes](int index) {
        return std::uint32_t{static_cast<std::uint16_t>(codes[index])};
    };
    const std::uint32_t low = state ^ (word(0) | word(1) << 16);
    const std::uint32_t high = word(2) | word(3) << 16;
    return CrcTables[7][low & 0xFFU] ^ CrcTables[6][(low >> 8) & 0xFFU] ^
           CrcTables[5][(low >> 16) & 0xFFU] ^ CrcTables[4][low >> 24] ^
           CrcTables[3][high & 0xFFU] ^ CrcTables[2][(high >> 8) & 0xFFU] ^
           CrcTables[1][(high >> 16) & 0xFFU] ^ CrcTables[0][high >> 24];
}

}  // namespace

void Crc32::Add(std::span<const std::byte> bytes) noexcept {
    for (const std::byte byte : bytes) {
        m_state = AddByte(m_state, std::to_integer<std::uint32_t>(byte));
    }
}

void Crc32::AddCodes(std::span<const std::int16_t> codes) noexcept {
    std::size_t index = 0;
    for (; index + 4 <= codes.size(); index += 4) {
        m_state = AddFourCodes(m_state, codes.data() + index);
    }
    for (; index < codes.size(); ++index) {
        const auto code = static_cast<std::uint16_t>(codes[index]);
        m_state = AddByte(AddByte(m_state, code & 0xFFU), static_cast<std::uint32_t>(code >> 8));
    }
}

std::uint32_t CodesCrc32(std::span<const std::int16_t> codes) noexcept {
    Crc32 sum;
    sum.AddCodes(codes);
    return sum.Value();
}

}  // namespace krv
