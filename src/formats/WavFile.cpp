// WAV files, and RF64 and BW64 for those beyond 4 GiB.
#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/Readers.h"
#include "formats/SampleStreams.h"

namespace krv::formats {
namespace {

constexpr std::uint32_t InDs64 = 0xFFFFFFFF;
constexpr std::size_t MaxChannels = 256;

namespace WavTag {
constexpr std::uint16_t Integers = 1;
constexpr std::uint16_t Floats = 3;
constexpr std::uint16_t Extensible = 0xFFFE;
}  // namespace WavTag

struct WavContent {
    SampleType type;
    std::size_t channels = 0;
    std::uint32_t rate = 0;
    std::uint64_t dataFirst = 0;
    std::uint64_t dataBytes = 0;
};

// What matters of other chunks is in these.
constexpr std::size_t MostStartBytes = 40;
constexpr std::size_t CuePointBytes = 24;
constexpr std::size_t MostCuePoints = 100000;
constexpr std::size_t MostCueBytes = 4 + MostCuePoints * CuePointBytes;

// Goes through the chunks up to the one that holds the samples.
class WavChunks {
 public:
    explicit WavChunks(const Opening& opening)
        : m_file(opening.file.name),
          m_stream(OpenPiece(opening.file, 12, std::numeric_limits<std::uint64_t>::max())) {}

    WavContent Find() {
        for (;;) {
            std::array<std::byte, 8> header{};
            if (m_stream->Read(header) < header.size()) {
                throw ByteFault(m_file, m_at, "The file ends without a data chunk.");
            }
            m_at += header.size();
            const std::string_view id = TextOf(header).substr(0, 4);
            const auto size = LoadAs<std::uint32_t>(std::span(header).subspan(4), false);
            if (id == "data") {
                return Data(size);
            }
            if (!TakeChunk(id, size)) {
                throw ByteFault(m_file, m_at, "The chunk " + QuotedExcerpt(id) + " is cut.");
            }
        }
    }

    // The points that the file marks; those of a chunk behind the samples are only looked for where
    // there is room for one.
    std::vector<Annotation> CuePoints(std::uint64_t dataBytes, std::uint64_t fileBytes) {
        const std::uint64_t end = m_content.dataFirst + dataBytes + dataBytes % 2;
        std::array<std::byte, 8> header{};
        bool isWhole = fileBytes >= CuePointBytes && end <= fileBytes - CuePointBytes &&
                       SkipBytes(*m_stream, end - m_content.dataFirst);
        while (isWhole && m_stream->Read(header) == header.size()) {
            const bool isCue = TextOf(header).starts_with("cue ");
            // What else is there changes nothing of what was read.
            isWhole = TakeChunk(isCue ? "cue " : "",
                                LoadAs<std::uint32_t>(std::span(header).subspan(4), false));
        }
        return std::move(m_cuePoints);
    }
    // A sentence on those that were left out; empty for none.
    [[nodiscard]] std::string NoteOnCuePoints() const {
        return m_hasMoreCuePoints ? "Left out: the cue points behind the first " +
                                        std::to_string(MostCuePoints) + '.'
                                  : std::string();
    }

 private:
    // False where it is cut.
    bool TakeChunk(std::string_view id, std::uint64_t size) {
        std::vector<std::byte> bytes(static_cast<std::size_t>(
            std::min<std::uint64_t>(size, id == "cue " ? MostCueBytes : MostStartBytes)));
        if (m_stream->Read(bytes) < bytes.size()) {
            return false;
        }
        if (id == "fmt ") {
            TakeFormat(bytes);
        } else if (id == "ds64" && bytes.size() >= 16) {
            m_largeDataBytes = LoadAs<std::uint64_t>(std::span(bytes).subspan(8), false);
        } else if (id == "cue ") {
            TakeCuePoints(bytes);
            m_hasMoreCuePoints = size >= MostCueBytes + CuePointBytes;
        }
        // Chunks begin at even places.
        const std::uint64_t rest = size - bytes.size() + size % 2;
        if (!SkipBytes(*m_stream, rest)) {
            return false;
        }
        m_at += bytes.size() + rest;
        return true;
    }

    // Behind their number, each with the frame in its last word.
    void TakeCuePoints(std::span<const std::byte> bytes) {
        for (std::size_t end = 4 + CuePointBytes; end <= bytes.size(); end += CuePointBytes) {
            m_cuePoints.push_back({LoadAs<std::uint32_t>(bytes.subspan(end - 4), false), 1});
        }
    }

    void TakeFormat(std::span<const std::byte> bytes) {
        if (bytes.size() < 16) {
            throw ByteFault(m_file, m_at, "The format chunk is too short.");
        }
        const auto word = [&](std::size_t at) {
            return LoadAs<std::uint16_t>(bytes.subspan(at), false);
        };
        const std::uint16_t tag =
            word(0) == WavTag::Extensible && bytes.size() >= 26 ? word(24) : word(0);
        m_content.channels = word(2);
        m_content.rate = LoadAs<std::uint32_t>(bytes.subspan(4), false);
        const std::size_t frameBytes = word(12);
        const std::size_t channels = m_content.channels;
        if (channels == 0 || channels > MaxChannels || frameBytes % channels != 0) {
            throw ByteFault(m_file, m_at,
                            std::to_string(channels) + " channels in frames of " +
                                std::to_string(frameBytes) + " bytes can't be.");
        }
        m_content.type = TypeOf(tag, frameBytes / channels);
    }

    [[nodiscard]] SampleType TypeOf(std::uint16_t tag, std::size_t bytes) const {
        const bool isFloat = tag == WavTag::Floats && (bytes == 4 || bytes == 8);
        const bool isInteger = tag == WavTag::Integers && bytes >= 1 && bytes <= 4;
        if (!isFloat && !isInteger) {
            throw ByteFault(m_file, m_at,
                            "Values of kind " + std::to_string(tag) + " with " +
                                std::to_string(bytes) +
                                " bytes are not read; save the file as PCM or floats.");
        }
        return {isFloat      ? SampleKind::Float
                : bytes == 1 ? SampleKind::Unsigned
                             : SampleKind::Signed,
                static_cast<std::uint8_t>(bytes), false};
    }

    WavContent Data(std::uint32_t size) {
        if (m_content.channels == 0) {
            throw ByteFault(m_file, m_at, "The data chunk comes before the format chunk.");
        }
        m_content.dataFirst = m_at;
        m_content.dataBytes = size == InDs64 && m_largeDataBytes > 0 ? m_largeDataBytes : size;
        return m_content;
    }

    const std::string& m_file;
    std::unique_ptr<ByteStream> m_stream;
    std::uint64_t m_at = 12;
    std::uint64_t m_largeDataBytes = 0;
    WavContent m_content;
    std::vector<Annotation> m_cuePoints;
    bool m_hasMoreCuePoints = false;
};

}  // namespace

bool IsWav(const Opening& opening) {
    const std::string_view text = TextOf(opening.beginning);
    return (text.starts_with("RIFF") || text.starts_with("RF64") || text.starts_with("BW64")) &&
           text.size() >= 12 && text.substr(8, 4) == "WAVE";
}

std::unique_ptr<Recording> OpenWav(const Opening& opening) {
    WavChunks chunks(opening);
    WavContent content = chunks.Find();
    About about = AboutSamples("WAV", {content.type, false}, content.channels);
    const std::uint64_t left = opening.size - std::min(opening.size, content.dataFirst);
    if (content.dataBytes == 0 || content.dataBytes > left) {
        // A recording that was cut off, or is still under way, has no length yet.
        about.notes.emplace_back("The length in the file is wrong: it was read to its end.");
        content.dataBytes = left;
    }
    CountFrames(about, content.dataBytes, content.type.bytes * content.channels);
    about.annotations = chunks.CuePoints(content.dataBytes, opening.size);
    if (std::string note = chunks.NoteOnCuePoints(); !note.empty()) {
        about.notes.push_back(std::move(note));
    }
    if (content.rate > 0) {
        about.sampleRate = content.rate;
    }
    if (about.frames == 0U) {
        throw ByteFault(opening.file.name, content.dataFirst, "The file holds no samples.");
    }
    std::vector<SampleStream> streams;
    streams.push_back({OpenPiece(opening.file, content.dataFirst, content.dataBytes), content.type,
                       content.channels});
    return std::make_unique<SampleStreams>(opening.file.name, std::move(about), std::move(streams));
}

}  // namespace krv::formats
