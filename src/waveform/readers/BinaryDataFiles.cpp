#include "waveform/readers/BinaryDataFiles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"
#include "waveform/data/FileLook.h"

namespace krv::waveform {
namespace {

Error FormatError(const FileToRead& file, const std::string& finding, const std::string& rule) {
    return Error(ErrorNumber::InvalidFileFormat,
                 "The " + file.label + " (" + file.fileName + ") " + finding + std::string(CrLf) +
                     rule + std::string(CrLf) +
                     "Please confirm that the specified File Format is correct.");
}

std::size_t PointCount(const FileToRead& file, std::uint64_t fileBytes) {
    if (fileBytes % 2 != 0) {
        throw FormatError(file, "is " + std::to_string(fileBytes) + " bytes in length.",
                          "Binary KRV DAC files must always contain an even number of bytes.");
    }
    const std::uint64_t count = fileBytes / 2;
    if (count > MaximumBinaryPoints) {
        throw FormatError(file, "appears to be " + std::to_string(count) + " points in length.",
                          "This exceeds the maximum number of points supported.");
    }
    return static_cast<std::size_t>(count);
}

// Files of other programs would pass for codes, as any bytes do.
void RequireNoOtherFormat(const FileToRead& file, const ReadServices& services) {
    std::array<std::byte, FileLookBytes> beginning{};
    const std::size_t size = services.files.OpenToRead(file.fileName)->Read(beginning);
    const std::string_view look = FileLook(std::span(beginning).first(size));
    if (!look.empty()) {
        throw FormatError(file, "looks like " + std::string(look) + ".",
                          "Binary KRV DAC files hold nothing but the samples.");
    }
}

void SwapBytes(std::span<std::int16_t> words) noexcept {
    for (std::int16_t& word : words) {
        const auto bits = static_cast<std::uint16_t>(word);
        word = static_cast<std::int16_t>((bits << 8U) | (bits >> 8U));
    }
}

// Two bytes a value, read to where the values stay.
struct Words {
    static constexpr std::size_t Bytes = 2;
    SampleFormat format;

    // False at the end of the file.
    [[nodiscard]] bool Read(FileBlocks& blocks, std::span<std::int16_t> values) const {
        const std::span<std::byte> bytes = std::as_writable_bytes(values);
        if (blocks.Read(bytes) < bytes.size()) {
            return false;
        }
        constexpr bool littleMachine = std::endian::native == std::endian::little;
        if (littleMachine != (format == SampleFormat::LittleEndianSigned)) {
            SwapBytes(values);
        }
        return true;
    }
};

struct UnsignedBytes {
    static constexpr std::size_t Bytes = 1;

    [[nodiscard]] static bool Read(FileBlocks& blocks, std::span<std::int16_t> values) {
        const std::span<const std::byte> bytes = blocks.Next(values.size());
        if (bytes.size() < values.size()) {
            return false;
        }
        std::ranges::transform(bytes, values.begin(), [](std::byte value) {
            return std::to_integer<std::int16_t>(value);
        });
        return true;
    }
};

// The range of each block is taken while the block is in the cache.
template <class Sample>
Channel ReadSamples(const FileToRead& file, const ReadServices& services, const Sample& sample,
                    bool isUnsigned) {
    FileBlocks blocks(file, services);
    const std::size_t count = PointCount(file, blocks.FileBytes());
    RequireNoOtherFormat(file, services);
    const auto progressSteps = static_cast<std::int32_t>(2 * count);
    services.progress.ShowMessage("Reading " + file.label + "...");
    services.progress.ShowProgress(progressSteps, 0);
    SampleBuffer<std::int16_t> values(count);
    CodeRange range;
    while (values.Size() < count) {
        const std::size_t done = values.Size();
        values.Resize(std::min(count, done + services.blockBytes / Sample::Bytes));
        const auto block = values.Span().subspan(done);
        if (!sample.Read(blocks, block)) {
            throw Error(ErrorNumber::InputPastEndOfFile, "Premature EOF reading " + file.label);
        }
        range.Add(RangeOf(block));
        services.progress.ShowProgress(progressSteps, static_cast<std::int32_t>(2 * values.Size()));
        if (services.progress.IsCancelled()) {
            throw CancelError();
        }
    }
    blocks.RequireUnchanged();
    return {InternalValues{SharedCodes(std::move(values)), isUnsigned, range}, file.fileName,
            blocks.FileDate(), true};
}

}  // namespace

Channel ReadBinaryDacFile(const FileToRead& file, SampleFormat format,
                          const ReadServices& services) {
    return ReadSamples(file, services, Words{format}, format == SampleFormat::BigEndianUnsigned);
}

Channel ReadBinaryMarkerFile(const FileToRead& file, const ReadServices& services) {
    return ReadSamples(file, services, UnsignedBytes{}, false);
}

}  // namespace krv::waveform
