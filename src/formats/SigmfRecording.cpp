// SigMF recordings: a description beside a file of samples, or both in an archive.
#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/Joined.h"
#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/Inflate.h"
#include "formats/Readers.h"
#include "formats/SampleStreams.h"
#include "formats/SigmfMeta.h"
#include "formats/TarArchive.h"
#include "formats/ZipArchive.h"

namespace krv::formats {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view MetaEnding = ".sigmf-meta";
constexpr std::string_view DataEnding = ".sigmf-data";
constexpr std::uint64_t MostMetaBytes = std::uint64_t{16} << 20U;

// What stands in front of the ending that a name has; the whole name for any other.
std::string_view StemOf(std::string_view name) {
    const bool hasEnding = name.ends_with(MetaEnding) || name.ends_with(DataEnding);
    return hasEnding ? name.substr(0, name.size() - MetaEnding.size()) : name;
}

std::string MetaText(const std::string& name, std::unique_ptr<ByteStream> stream,
                     std::uint64_t bytes) {
    if (bytes > MostMetaBytes) {
        throw FileFault(name, "The description is too long.");
    }
    std::string text(static_cast<std::size_t>(bytes), '\0');
    text.resize(stream->Read(std::as_writable_bytes(std::span(text))));
    return text;
}

// From one capture to the next the signal may jump. Empty for one that all points belong to.
std::string NoteOnCaptures(const std::vector<std::uint64_t>& starts) {
    constexpr std::size_t Most = 8;
    if (starts.size() < 2) {
        return starts.empty() || starts.front() == 0
                   ? std::string()
                   : "The capture begins at point " + std::to_string(starts.front()) +
                         "; the points in front of it were read, too.";
    }
    std::vector<std::string> listed;
    for (std::size_t k = 0; k < std::min(starts.size(), Most); ++k) {
        listed.push_back(std::to_string(starts[k]));
    }
    return "The recording has " + std::to_string(starts.size()) +
           " captures, which were read as one. They begin at the points " + Joined(listed) +
           (starts.size() > Most ? " and so on" : "") + ".";
}

// The samples are a stream of so many bytes, which include what stands around them.
std::unique_ptr<Recording> MakeRecording(const std::string& file, const SigmfMeta& meta,
                                         std::unique_ptr<ByteStream> data, std::uint64_t bytes,
                                         const std::vector<std::string>& notes = {}) {
    About about = AboutSamples("SigMF", meta.layout, meta.channels);
    const std::size_t width = about.columns.size();
    const std::uint64_t around = meta.headerBytes + meta.trailingBytes;
    if (around < meta.headerBytes || around > bytes) {
        throw FileFault(file, "The samples are shorter than what stands around them.");
    }
    CountFrames(about, bytes - around, meta.layout.type.bytes * width);
    if (about.frames == 0U) {
        throw FileFault(file, "It holds no sample.");
    }
    about.sampleRate = meta.sampleRate;
    about.annotations = meta.annotations;
    about.firstFrame = meta.offset;
    about.notes.insert(about.notes.end(), notes.begin(), notes.end());
    if (std::string note = NoteOnCaptures(meta.captures); !note.empty()) {
        about.notes.push_back(std::move(note));
    }
    std::vector<SampleStream> streams;
    streams.push_back(
        {PieceOf(std::move(data), meta.headerBytes, bytes - around), meta.layout.type, width});
    return std::make_unique<SampleStreams>(file, std::move(about), std::move(streams));
}

using OpenStream = std::function<std::unique_ptr<ByteStream>()>;

struct ArchiveMember {
    std::string name;
    std::uint64_t bytes = 0;
    OpenStream open;
};

std::vector<ArchiveMember> MembersOfTar(const std::string& file, const OpenStream& open) {
    std::vector<ArchiveMember> members;
    for (const TarMember& each : ListTarMembers(file, *open())) {
        members.push_back({each.name, each.bytes,
                           [open, each] { return PieceOf(open(), each.first, each.bytes); }});
    }
    return members;
}

std::vector<ArchiveMember> MembersOfZip(const Opening& opening) {
    std::vector<ArchiveMember> members;
    for (const ZipMember& each : ListZipMembers(opening.file, opening.size)) {
        members.push_back({each.name, each.bytes,
                           [file = opening.file, each] { return OpenZipMember(file, each); }});
    }
    return members;
}

// The first recording of an archive is read.
std::vector<std::string> NotesOnOthers(const std::vector<ArchiveMember>& members,
                                       const ArchiveMember& read) {
    std::vector<std::string> notes;
    for (const ArchiveMember& member : members) {
        if (&member != &read && std::string_view(member.name).ends_with(MetaEnding)) {
            notes.push_back("Left out: " + QuotedExcerpt(member.name) +
                            ", another recording of the archive.");
        }
    }
    return notes;
}

std::unique_ptr<Recording> OpenFromArchive(const std::string& file,
                                           const std::vector<ArchiveMember>& members) {
    const auto meta = std::ranges::find_if(members, [](const ArchiveMember& member) {
        return std::string_view(member.name).ends_with(MetaEnding);
    });
    if (meta == members.end()) {
        throw FileFault(file, "The archive holds no " + QuotedExcerpt(MetaEnding) + '.');
    }
    const ArchiveMember& metaMember = *meta;
    const std::string place = file + ", " + QuotedExcerpt(metaMember.name);
    const SigmfMeta described =
        ParseSigmfMeta(place, MetaText(place, metaMember.open(), metaMember.bytes));
    // Beside the description, whatever folder that is.
    const std::string folder = metaMember.name.substr(0, metaMember.name.rfind('/') + 1);
    const std::string wanted = described.dataset.empty()
                                   ? std::string(StemOf(metaMember.name)) + std::string(DataEnding)
                                   : folder + described.dataset;
    const auto data = std::ranges::find(members, wanted, &ArchiveMember::name);
    if (data == members.end()) {
        throw FileFault(file, "The archive holds no " + QuotedExcerpt(wanted) + '.');
    }
    return MakeRecording(file, described, data->open(), data->bytes,
                         NotesOnOthers(members, metaMember));
}

bool IsGzip(const Opening& opening) {
    return TextOf(opening.beginning).starts_with("\x1F\x8B"sv);
}

// Told by the name of its first member, or by its own.
bool IsSigmfZip(const Opening& opening) {
    const std::string_view text = TextOf(opening.beginning);
    if (!text.starts_with("PK\3\4"sv) || text.size() < 30) {
        return false;
    }
    const std::size_t nameBytes =
        LoadAs<std::uint16_t>(std::span(opening.beginning).subspan(26), false);
    const std::string_view member = text.substr(30, nameBytes);
    return member.ends_with(MetaEnding) || member.ends_with(DataEnding) ||
           std::string_view(opening.file.name).ends_with(".sigmf.zip");
}

}  // namespace

bool IsSigmf(const Opening& opening) {
    const std::string_view name = opening.file.name;
    return name.ends_with(MetaEnding) || name.ends_with(DataEnding) ||
           (TextOf(opening.beginning).starts_with('{') &&
            TextOf(opening.beginning).find("\"core:datatype\"") != std::string_view::npos);
}

std::unique_ptr<Recording> OpenSigmf(const Opening& opening) {
    ports::FileSystem& files = opening.file.files;
    const std::string stem(StemOf(opening.file.name));
    const bool isPair = stem.size() < opening.file.name.size();
    const std::string metaName = isPair ? stem + std::string(MetaEnding) : stem;
    const SigmfMeta meta = ParseSigmfMeta(
        metaName, MetaText(metaName, files.OpenToRead(metaName), files.FileSize(metaName)));
    const std::size_t folder = metaName.find_last_of("/\\") + 1;
    const std::string dataName = meta.dataset.empty() ? stem + std::string(DataEnding)
                                                      : metaName.substr(0, folder) + meta.dataset;
    if (!files.FileExists(dataName)) {
        throw FileFault(metaName, "Its samples aren't there: " + dataName + '.');
    }
    return MakeRecording(dataName, meta, files.OpenToRead(dataName), files.FileSize(dataName));
}

bool IsSigmfArchive(const Opening& opening) {
    const std::string_view name = opening.file.name;
    return IsTar(opening.beginning) || IsSigmfZip(opening) ||
           (IsGzip(opening) && (name.ends_with(".sigmf.gz") || name.ends_with(".sigmf.tgz")));
}

std::unique_ptr<Recording> OpenSigmfArchive(const Opening& opening) {
    const InputFile& file = opening.file;
    if (IsSigmfZip(opening)) {
        return OpenFromArchive(file.name, MembersOfZip(opening));
    }
    const bool isGzip = IsGzip(opening);
    const OpenStream open = [file, isGzip]() -> std::unique_ptr<ByteStream> {
        auto stream = file.files.OpenToRead(file.name);
        return isGzip ? Inflated(file.name, std::move(stream), Packing::Gzip) : std::move(stream);
    };
    return OpenFromArchive(file.name, MembersOfTar(file.name, open));
}

}  // namespace krv::formats
