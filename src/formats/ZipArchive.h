// ZipArchive: the members of a zip archive, from its directory at the end of the file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "formats/ByteStreams.h"

namespace krv::formats {

struct ZipMember {
    std::string name;
    // Of its local header.
    std::uint64_t first = 0;
    std::uint64_t packedBytes = 0;
    std::uint64_t bytes = 0;
    // 0 stored, 8 deflated.
    std::uint16_t method = 0;
    // Of the bytes, unpacked.
    std::uint32_t crc32 = 0;
};

// In the order of the directory. Throws Error 321 where there is none or it is damaged.
[[nodiscard]] std::vector<ZipMember> ListZipMembers(const InputFile& file, std::uint64_t fileBytes);

// The member's bytes, unpacked. Reading the last of them throws Error 321 where the checksum
// differs.
[[nodiscard]] std::unique_ptr<ByteStream> OpenZipMember(const InputFile& file,
                                                        const ZipMember& member);

}  // namespace krv::formats
