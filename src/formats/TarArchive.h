// TarArchive: the regular files in a tar archive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "formats/ByteStreams.h"

namespace krv::formats {

struct TarMember {
    std::string name;
    // Of its first byte in the archive.
    std::uint64_t first = 0;
    std::uint64_t bytes = 0;
};

[[nodiscard]] bool IsTar(std::span<const std::byte> beginning) noexcept;

// Reads the archive's stream to its end. Throws Error 321 where it is damaged or cut.
[[nodiscard]] std::vector<TarMember> ListTarMembers(const std::string& file, ByteStream& stream);

}  // namespace krv::formats
