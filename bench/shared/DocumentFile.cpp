#include "bench/shared/DocumentFile.h"

#include <algorithm>
#include <cstdint>

#include "common/Crc32.h"
#include "common/Error.h"

namespace krv::bench {
namespace {

// The line end makes damage by a transfer as text show at once.
constexpr std::string_view Signature = "KRVDOC\r\n";
constexpr std::uint32_t Version = 1;
constexpr std::size_t NameBytes = 8;
constexpr std::uint32_t MostSections = 64;

std::uint32_t ChecksumOf(std::string_view bytes) {
    Crc32 sum;
    sum.Add(std::as_bytes(std::span(bytes)));
    return sum.Value();
}

template <class Number>
void Append(std::string& bytes, Number number) {
    for (std::size_t index = 0; index < sizeof number; ++index) {
        bytes += static_cast<char>((number >> (8 * index)) & 0xFF);
    }
}

Error Damaged(const std::string& what) {
    return Error(ErrorNumber::InvalidFileFormat, "The file is damaged: " + what + ".");
}

// Takes a file apart from its start.
class Reader {
 public:
    explicit Reader(std::string_view bytes) : m_bytes(bytes) {}

    [[nodiscard]] std::size_t Position() const { return m_at; }
    [[nodiscard]] std::size_t Left() const { return m_bytes.size() - m_at; }

    std::string_view Take(std::uint64_t count) {
        if (count > Left()) {
            throw Damaged("its end is missing");
        }
        const std::string_view taken = m_bytes.substr(m_at, static_cast<std::size_t>(count));
        m_at += taken.size();
        return taken;
    }
    template <class Number>
    Number TakeNumber() {
        Number number = 0;
        for (std::size_t index = 0; const char byte : Take(sizeof number)) {
            number |= static_cast<Number>(static_cast<unsigned char>(byte)) << (8 * index++);
        }
        return number;
    }

 private:
    std::string_view m_bytes;
    std::size_t m_at = 0;
};

// What the table says of a section.
struct TableEntry {
    std::string_view name;
    std::uint64_t length = 0;
    std::uint32_t checksum = 0;
};

std::vector<TableEntry> ReadTable(Reader& reader, std::string_view bytes) {
    reader.Take(Signature.size());
    if (const auto version = reader.TakeNumber<std::uint32_t>(); version != Version) {
        throw Error(ErrorNumber::InvalidFileFormat, "The file is of version " +
                                                        std::to_string(version) +
                                                        ", which this program can't read.");
    }
    const auto count = reader.TakeNumber<std::uint32_t>();
    if (count > MostSections) {
        throw Damaged("its table of sections makes no sense");
    }
    std::vector<TableEntry> table;
    for (std::uint32_t index = 0; index < count; ++index) {
        const std::string_view padded = reader.Take(NameBytes);
        TableEntry entry{padded.substr(0, padded.find('\0'))};
        entry.length = reader.TakeNumber<std::uint64_t>();
        entry.checksum = reader.TakeNumber<std::uint32_t>();
        table.push_back(entry);
    }
    const std::uint32_t expected = ChecksumOf(bytes.substr(0, reader.Position()));
    if (reader.TakeNumber<std::uint32_t>() != expected) {
        throw Damaged("its table of sections was altered");
    }
    return table;
}

}  // namespace

std::string EncodeDocument(std::span<const DocumentSection> sections) {
    std::string file(Signature);
    Append(file, Version);
    Append(file, static_cast<std::uint32_t>(sections.size()));
    for (const DocumentSection& section : sections) {
        std::string name = section.name;
        name.resize(NameBytes);
        file += name;
        Append(file, static_cast<std::uint64_t>(section.bytes.size()));
        Append(file, ChecksumOf(section.bytes));
    }
    Append(file, ChecksumOf(file));
    for (const DocumentSection& section : sections) {
        file += section.bytes;
    }
    return file;
}

bool DocumentFile::IsOne(std::string_view bytes) noexcept {
    return bytes.substr(0, Signature.size()) == Signature;
}

DocumentFile::DocumentFile(std::string_view bytes) {
    if (!IsOne(bytes)) {
        throw Damaged("it doesn't start as such a file does");
    }
    Reader reader(bytes);
    for (const TableEntry& entry : ReadTable(reader, bytes)) {
        const std::string_view content = reader.Take(entry.length);
        m_sections.push_back({entry.name, content, ChecksumOf(content) == entry.checksum});
    }
    if (reader.Left() != 0) {
        throw Damaged("it is longer than it was");
    }
}

std::optional<std::string_view> DocumentFile::Section(std::string_view name) const {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Entry& entry) { return entry.name == name; });
    if (found == m_sections.end()) {
        return std::nullopt;
    }
    if (!found->isIntact) {
        throw Damaged("its section \"" + std::string(name) + "\" was altered");
    }
    return found->bytes;
}

void DocumentFile::RequireKind(std::string_view kind) const {
    if (const auto own = Section(SectionName::Kind); own != kind) {
        throw Error(ErrorNumber::InvalidFileFormat, "The file holds no " + std::string(kind) + ".");
    }
}

}  // namespace krv::bench
