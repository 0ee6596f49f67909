// Streams of bytes that the readers are made of: pieces of files, and bytes in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ports/desktop/FileSystem.h"

namespace krv::formats {

using ByteStream = ports::SequentialFile;

// A file to be read, and where it is.
struct InputFile {
    ports::FileSystem& files;
    // The path in UTF-8.
    std::string name;
    // No file of this computer has this path: only `files` has what it stands for.
    bool isInMemory = false;
};

// A piece of a file: `count` bytes from `first` on, fewer where the file ends before.
[[nodiscard]] std::unique_ptr<ByteStream> OpenPiece(const InputFile& file, std::uint64_t first,
                                                    std::uint64_t count);
// A piece of whatever is left of a stream.
[[nodiscard]] std::unique_ptr<ByteStream> PieceOf(std::unique_ptr<ByteStream> stream,
                                                  std::uint64_t first, std::uint64_t count);
// Bytes in memory, which several streams may share; the owner keeps them.
[[nodiscard]] std::unique_ptr<ByteStream> SharedBytes(std::shared_ptr<const void> owner,
                                                      std::span<const std::byte> bytes);

// Reads and forgets so many bytes; false where the stream ends before.
[[nodiscard]] bool SkipBytes(ByteStream& stream, std::uint64_t count);

// The bytes of a short piece of a file, fewer where it ends before.
[[nodiscard]] std::vector<std::byte> ReadPiece(const InputFile& file, std::uint64_t first,
                                               std::size_t count);

[[nodiscard]] inline std::string_view TextOf(std::span<const std::byte> bytes) noexcept {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace krv::formats
