#include "formats/TarArchive.h"

#include <array>
#include <charconv>
#include <optional>
#include <string_view>

#include "formats/Fault.h"

namespace krv::formats {
namespace {

constexpr std::size_t TarBlock = 512;
constexpr std::size_t MostTarMembers = 10000;

using TarHeader = std::array<std::byte, TarBlock>;

std::string_view Field(const TarHeader& header, std::size_t at, std::size_t size) {
    const std::string_view field = TextOf(header).substr(at, size);
    return field.substr(0, field.find('\0'));
}

// Sizes are octal digits, or binary behind a byte 0x80 where they are large.
std::optional<std::uint64_t> TarNumber(const TarHeader& header, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    if (header[at] == std::byte{0x80}) {
        for (std::size_t k = size - 8; k < size; ++k) {
            value = value << 8U | std::to_integer<std::uint64_t>(header[at + k]);
        }
        return value < std::uint64_t{1} << 62U ? std::optional(value) : std::nullopt;
    }
    std::string_view digits = Field(header, at, size);
    while (!digits.empty() && digits.front() == ' ') {
        digits.remove_prefix(1);
    }
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 8);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

}  // namespace

bool IsTar(std::span<const std::byte> beginning) noexcept {
    return beginning.size() >= TarBlock && TextOf(beginning).substr(257, 5) == "ustar";
}

std::vector<TarMember> ListTarMembers(const std::string& file, ByteStream& stream) {
    std::vector<TarMember> members;
    std::uint64_t at = 0;
    TarHeader header{};
    while (stream.Read(header) == TarBlock && header[0] != std::byte{0}) {
        const auto bytes = TarNumber(header, 124, 12);
        if (!IsTar(header) || !bytes || members.size() > MostTarMembers) {
            throw ByteFault(file, at, "This is not the header of an archive's member.");
        }
        at += TarBlock;
        const char kind = static_cast<char>(header[156]);
        if (kind == '0' || kind == '\0') {
            const std::string_view prefix = Field(header, 345, 155);
            members.push_back({std::string(prefix) + (prefix.empty() ? "" : "/") +
                                   std::string(Field(header, 0, 100)),
                               at, *bytes});
        }
        const std::uint64_t padded = (*bytes + TarBlock - 1) / TarBlock * TarBlock;
        // The last member's padding may be missing.
        if (!SkipBytes(stream, *bytes)) {
            throw ByteFault(file, at, "The archive is cut.");
        }
        static_cast<void>(SkipBytes(stream, padded - *bytes));
        at += padded;
    }
    return members;
}

}  // namespace krv::formats
