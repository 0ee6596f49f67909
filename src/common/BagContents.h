// A property bag's entries as bytes and back: version 1 of the encoding, which docs/file-formats.md
// describes. Equal entries have equal bytes, whatever the machine.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "common/Value.h"

namespace krv {

using BagEntry = std::pair<std::string, Value>;

namespace BagLimit {
inline constexpr std::size_t Bytes = std::size_t{64} << 20;
// Entries and elements of arrays together.
inline constexpr std::size_t Values = ValueLimit::Elements;
}  // namespace BagLimit

// Throws Error 380 for what DecodeBag would refuse to read back: too much, arrays nested too deep,
// an array whose elements don't fit its kind or dimensions, a name that is there twice.
[[nodiscard]] std::vector<std::byte> EncodeBag(std::span<const BagEntry> entries);

// The bytes may come from anywhere. The cost is linear in their number, and so is the memory taken.
// Throws Error 321, saying what is wrong, for anything that EncodeBag doesn't write.
[[nodiscard]] std::vector<BagEntry> DecodeBag(std::span<const std::byte> contents);

}  // namespace krv
