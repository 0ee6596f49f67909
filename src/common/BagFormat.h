// What the writer and the reader of a property bag's bytes share. Not for others.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "common/BagContents.h"

namespace krv::bag {

// The line end makes damage by a transfer as text show at once.
inline constexpr std::array<char, 8> Signature{'K', 'R', 'V', 'B', 'A', 'G', '\r', '\n'};
inline constexpr std::uint32_t Version = 1;
// Signature, version and length of what follows up to the checksum.
inline constexpr std::size_t HeaderBytes = Signature.size() + 4 + 4;
inline constexpr std::size_t ChecksumBytes = 4;

// The byte for the kind of a value: the place of its kind among Value's alternatives.
enum class Kind : std::uint8_t {
    Empty,
    Null,
    Boolean,
    Integer,
    Long,
    Single,
    Double,
    Currency,
    Date,
    ErrorCode,
    Text,
    Bytes,
    Array
};
inline constexpr std::size_t KindCount = std::variant_size_v<Value>;
static_assert(KindCount == static_cast<std::size_t>(Kind::Array) + 1);

[[nodiscard]] bool HasNameTwice(std::span<const BagEntry> entries);

}  // namespace krv::bag
