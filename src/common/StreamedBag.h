// A property bag in a stream that others write to as well: its contents behind a header that says
// how many bytes they are. docs/file-formats.md describes it.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "common/MemoryPropertyBag.h"

namespace krv {

// Throws Error 380 when the bag exceeds the limits of the encoding.
[[nodiscard]] std::vector<std::byte> EncodeStreamedBag(const MemoryPropertyBag& bag);

// Fills the span as far as it can and returns how many bytes that are: less only at the end. Throws
// when the stream can't be read.
using ByteSource = std::function<std::size_t(std::span<std::byte>)>;

// Reads a bag from a stream, which may come from anywhere, and leaves the bytes that follow it. A
// stream that ends at once gives an empty bag; anything else that EncodeStreamedBag didn't write
// gives none. Takes memory for the bytes that the stream has, not for the number that its header
// claims. Throws what the source throws.
[[nodiscard]] std::optional<MemoryPropertyBag> ReadStreamedBag(const ByteSource& source);

}  // namespace krv
