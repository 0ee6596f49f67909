#include "formats/TarArchive.h"

#include <array>
#include <charconv>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/Fault.h"

namespace krv::formats {
namespace {

constexpr std::size_t TarBlock = 512;
constexpr std::size_t MostTarMembers = 10000;
constexpr std::uint64_t MostExtensionBytes = std::uint64_t{1} << 20U;

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

// What has no room in the header of the next member.
struct TarExtension {
    std::string name;
    std::optional<std::uint64_t> bytes;
};

// Records like "30 path=a/long/name\n", each with its own length in front.
void TakePaxRecords(std::string_view records, TarExtension& extension) {
    while (!records.empty()) {
        std::size_t size = 0;
        const auto [end, error] =
            std::from_chars(records.data(), records.data() + records.size(), size);
        const auto digits = static_cast<std::size_t>(end - records.data());
        if (error != std::errc() || size <= digits + 1 || size > records.size()) {
            return;
        }
        const std::string_view record = records.substr(digits + 1, size - digits - 2);
        if (record.starts_with("path=")) {
            extension.name = record.substr(5);
        } else if (record.starts_with("size=")) {
            std::uint64_t bytes = 0;
            std::from_chars(record.data() + 5, record.data() + record.size(), bytes);
            extension.bytes = bytes;
        }
        records.remove_prefix(size);
    }
}

}  // namespace

bool IsTar(std::span<const std::byte> beginning) noexcept {
    return beginning.size() >= TarBlock && TextOf(beginning).substr(257, 5) == "ustar";
}

namespace {

class TarList {
 public:
    TarList(std::string file, ByteStream& stream) : m_file(std::move(file)), m_stream(stream) {}

    std::vector<TarMember> Take() {
        TarHeader header{};
        while (m_stream.Read(header) == TarBlock && header[0] != std::byte{0}) {
            const auto bytes = TarNumber(header, 124, 12);
            if (!IsTar(header) || !bytes || m_members.size() > MostTarMembers) {
                throw ByteFault(m_file, m_at, "This is not the header of an archive's member.");
            }
            m_at += TarBlock;
            TakeContent(header, *bytes);
        }
        return std::move(m_members);
    }

 private:
    void TakeContent(const TarHeader& header, std::uint64_t bytes) {
        switch (static_cast<char>(header[156])) {
            case 'x':
                return TakePaxRecords(Text(bytes), m_next);
            case 'L':
                m_next.name = Text(bytes);
                m_next.name.resize(m_next.name.find_last_not_of('\0') + 1);
                return;
            case 'g':
            case 'K':
                return Skip(bytes);
            case '0':
            case '\0':
                m_members.push_back({m_next.name.empty() ? NameIn(header) : m_next.name, m_at,
                                     m_next.bytes.value_or(bytes)});
                break;
            default:
                break;
        }
        Skip(m_next.bytes.value_or(bytes));
        m_next = {};
    }

    static std::string NameIn(const TarHeader& header) {
        // Others have times where the standard has what stands in front of the name.
        const bool isStandard = header[262] == std::byte{0};
        const std::string_view prefix = isStandard ? Field(header, 345, 155) : std::string_view();
        return std::string(prefix) + (prefix.empty() ? "" : "/") +
               std::string(Field(header, 0, 100));
    }

    std::string Text(std::uint64_t bytes) {
        if (bytes > MostExtensionBytes) {
            throw ByteFault(m_file, m_at, "A name in the archive is too long.");
        }
        std::string text(static_cast<std::size_t>(bytes), '\0');
        if (m_stream.Read(std::as_writable_bytes(std::span(text))) < text.size()) {
            throw ByteFault(m_file, m_at, "The archive is cut.");
        }
        SkipPadding(bytes);
        return text;
    }

    void Skip(std::uint64_t bytes) {
        if (!SkipBytes(m_stream, bytes)) {
            throw ByteFault(m_file, m_at, "The archive is cut.");
        }
        SkipPadding(bytes);
    }

    // That of the last member may be missing.
    void SkipPadding(std::uint64_t bytes) {
        const std::uint64_t padded = (bytes + TarBlock - 1) / TarBlock * TarBlock;
        static_cast<void>(SkipBytes(m_stream, padded - bytes));
        m_at += padded;
    }

    std::string m_file;
    ByteStream& m_stream;
    std::vector<TarMember> m_members;
    // Of the next header.
    std::uint64_t m_at = 0;
    TarExtension m_next;
};

}  // namespace

std::vector<TarMember> ListTarMembers(const std::string& file, ByteStream& stream) {
    return TarList(file, stream).Take();
}

}  // namespace krv::formats
