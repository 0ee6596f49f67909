#include "formats/ZipArchive.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "common/Crc32.h"
#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/Inflate.h"
#include "formats/SampleType.h"

namespace krv::formats {
namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t InExtraField = 0xFFFFFFFF;
constexpr std::size_t EndBytes = 22;
constexpr std::size_t MostCommentBytes = 65535;
constexpr std::size_t MostDirectoryBytes = std::size_t{16} << 20U;

using ZipBytes = std::span<const std::byte>;

template <class T>
T ZipNumber(ZipBytes bytes, std::size_t at) {
    return LoadAs<T>(bytes.subspan(at), false);
}

struct ZipDirectory {
    std::uint64_t first = 0;
    std::uint64_t bytes = 0;
};

// Takes the checksum of a member while it is read.
class CheckedMember final : public ByteStream {
 public:
    CheckedMember(const std::string& file, const ZipMember& member,
                  std::unique_ptr<ByteStream> bytes)
        : m_place(file + ", " + QuotedExcerpt(member.name)),
          m_left(member.bytes),
          m_expected(member.crc32),
          m_bytes(std::move(bytes)) {}

    std::size_t Read(std::span<std::byte> destination) override {
        const std::size_t count = m_bytes->Read(destination);
        m_sum.Add(destination.first(count));
        m_left -= std::min<std::uint64_t>(count, m_left);
        if (m_left == 0 && m_sum.Value() != m_expected) {
            throw FileFault(m_place, "It is damaged: its checksum differs.");
        }
        return count;
    }

 private:
    std::string m_place;
    std::uint64_t m_left;
    std::uint32_t m_expected;
    std::unique_ptr<ByteStream> m_bytes;
    Crc32 m_sum;
};

// The record in front of the end's gives what has no room there.
ZipDirectory LargeDirectory(const InputFile& file, std::uint64_t endAt) {
    const std::vector<std::byte> locator =
        ReadPiece(file, endAt - std::min<std::uint64_t>(20, endAt), 20);
    if (locator.size() < 20 || !TextOf(locator).starts_with("PK\6\7"sv)) {
        throw ByteFault(file.name, endAt, "The archive's directory isn't found.");
    }
    const std::vector<std::byte> record = ReadPiece(file, ZipNumber<std::uint64_t>(locator, 8), 56);
    if (record.size() < 56 || !TextOf(record).starts_with("PK\6\6"sv)) {
        throw ByteFault(file.name, endAt, "The archive's directory isn't found.");
    }
    return {ZipNumber<std::uint64_t>(record, 48), ZipNumber<std::uint64_t>(record, 40)};
}

ZipDirectory FindDirectory(const InputFile& file, std::uint64_t fileBytes) {
    const auto tailBytes =
        static_cast<std::size_t>(std::min<std::uint64_t>(fileBytes, EndBytes + MostCommentBytes));
    const std::uint64_t tailAt = fileBytes - tailBytes;
    const std::vector<std::byte> tail = ReadPiece(file, tailAt, tailBytes);
    const std::size_t at = TextOf(tail).rfind("PK\5\6"sv);
    if (at == std::string_view::npos || tail.size() - at < EndBytes) {
        throw FileFault(file.name,
                        "The archive's directory at its end is missing: the file is cut.");
    }
    const ZipBytes end = ZipBytes(tail).subspan(at);
    const ZipDirectory directory{ZipNumber<std::uint32_t>(end, 16),
                                 ZipNumber<std::uint32_t>(end, 12)};
    return directory.first == InExtraField || directory.bytes == InExtraField
               ? LargeDirectory(file, tailAt + at)
               : directory;
}

// The 64-bit sizes that stand in an extra field, in the order of those that have no room.
void TakeLargeSizes(ZipMember& member, ZipBytes extra) {
    while (extra.size() >= 4) {
        const auto size =
            std::min<std::size_t>(ZipNumber<std::uint16_t>(extra, 2), extra.size() - 4);
        ZipBytes field = extra.subspan(4, size);
        if (ZipNumber<std::uint16_t>(extra, 0) == 1) {
            for (std::uint64_t* value : {&member.bytes, &member.packedBytes, &member.first}) {
                if (*value == InExtraField && field.size() >= 8) {
                    *value = ZipNumber<std::uint64_t>(field, 0);
                    field = field.subspan(8);
                }
            }
        }
        extra = extra.subspan(4 + size);
    }
}

// What is known of the ways of packing that are not read.
std::string NameOfPacking(std::uint16_t method) {
    static constexpr std::array<std::pair<std::uint16_t, const char*>, 5> Names{
        {{9, "Deflate64"}, {12, "bzip2"}, {14, "LZMA"}, {93, "Zstandard"}, {95, "XZ"}}};
    const auto* const found =
        std::ranges::find(Names, method, &std::pair<std::uint16_t, const char*>::first);
    return found == Names.end() ? "method " + std::to_string(method) : found->second;
}

}  // namespace

std::vector<ZipMember> ListZipMembers(const InputFile& file, std::uint64_t fileBytes) {
    const ZipDirectory directory = FindDirectory(file, fileBytes);
    if (directory.bytes > MostDirectoryBytes || directory.bytes > fileBytes) {
        throw ByteFault(file.name, directory.first, "The archive's directory can't be that long.");
    }
    const std::vector<std::byte> bytes =
        ReadPiece(file, directory.first, static_cast<std::size_t>(directory.bytes));
    std::vector<ZipMember> members;
    ZipBytes rest = bytes;
    while (rest.size() >= 46 && TextOf(rest).starts_with("PK\1\2"sv)) {
        const std::size_t nameBytes = ZipNumber<std::uint16_t>(rest, 28);
        const std::size_t extraBytes = ZipNumber<std::uint16_t>(rest, 30);
        const std::size_t size = 46 + nameBytes + extraBytes + ZipNumber<std::uint16_t>(rest, 32);
        if (size > rest.size()) {
            break;
        }
        ZipMember member{std::string(TextOf(rest.subspan(46, nameBytes))),
                         ZipNumber<std::uint32_t>(rest, 42),
                         ZipNumber<std::uint32_t>(rest, 20),
                         ZipNumber<std::uint32_t>(rest, 24),
                         ZipNumber<std::uint16_t>(rest, 10),
                         ZipNumber<std::uint32_t>(rest, 16)};
        TakeLargeSizes(member, rest.subspan(46 + nameBytes, extraBytes));
        members.push_back(std::move(member));
        rest = rest.subspan(size);
    }
    if (members.empty() || !rest.empty()) {
        throw ByteFault(file.name, directory.first + (bytes.size() - rest.size()),
                        "The archive's directory is damaged.");
    }
    return members;
}

std::unique_ptr<ByteStream> OpenZipMember(const InputFile& file, const ZipMember& member) {
    const std::vector<std::byte> header = ReadPiece(file, member.first, 30);
    if (header.size() < 30 || !TextOf(header).starts_with("PK\3\4"sv)) {
        throw ByteFault(file.name, member.first, "The archive's member isn't there.");
    }
    const std::uint64_t first = member.first + 30 + ZipNumber<std::uint16_t>(header, 26) +
                                ZipNumber<std::uint16_t>(header, 28);
    auto packed = OpenPiece(file, first, member.packedBytes);
    if (member.method == 0) {
        return std::make_unique<CheckedMember>(file.name, member, std::move(packed));
    }
    if (member.method != 8) {
        throw FileFault(file.name + ", " + QuotedExcerpt(member.name),
                        "It is packed with " + NameOfPacking(member.method) +
                            ", which is not read. Pack it with deflate, or store it.");
    }
    return std::make_unique<CheckedMember>(
        file.name, member, Inflated(file.name, std::move(packed), Packing::Deflate));
}

}  // namespace krv::formats
