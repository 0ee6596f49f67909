// A property bag's contents with a payload from elsewhere, sealed as a writer would seal them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/Crc32.h"

namespace krv::tests {

// Little-endian.
inline std::string NumberBytes(std::uint64_t value, int bytes = 4) {
    std::string text;
    for (int byte = 0; byte < bytes; ++byte) {
        text += static_cast<char>(value >> (8 * byte) & 0xFF);
    }
    return text;
}

inline std::uint32_t ChecksumOf(std::string_view bytes) {
    Crc32 sum;
    sum.Add(std::as_bytes(std::span(bytes)));
    return sum.Value();
}

inline std::vector<std::byte> BytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

inline std::string SealedBag(const std::string& payload, std::uint32_t version = 1) {
    const std::string text =
        "KRVBAG\r\n" + NumberBytes(version) + NumberBytes(payload.size()) + payload;
    return text + NumberBytes(ChecksumOf(text));
}

}  // namespace krv::tests
