// Inflate: what was packed by deflate, as it was. Needs zlib, which a build may be without.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "formats/ByteStreams.h"

namespace krv::formats {

// Zip members hold the packed bytes alone; .gz files and the variables of .mat files have a header
// of their own around them.
enum class Packing : std::uint8_t { Deflate, Gzip, Zlib };

// Null where this build can unpack; otherwise what it lacks.
[[nodiscard]] const char* MissingToInflate() noexcept;

// The unpacked bytes of a stream. Reading throws Error 321 in the file's name where the packed
// bytes are damaged or cut. Only for a build that can unpack.
[[nodiscard]] std::unique_ptr<ByteStream> Inflated(const std::string& file,
                                                   std::unique_ptr<ByteStream> packed,
                                                   Packing packing);

}  // namespace krv::formats
