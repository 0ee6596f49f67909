#include "waveform/readers/BinaryDataFiles.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "common/Error.h"
#include "common/Text.h"

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

// The 16-bit word at a place of any alignment, low byte first.
std::uint16_t LittleEndianWord(const std::byte* at) noexcept {
    std::uint16_t word = 0;
    std::memcpy(&word, at, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        word = static_cast<std::uint16_t>((word << 8U) | (word >> 8U));
    }
    return word;
}

struct SignedWords {
    static constexpr std::size_t Bytes = 2;
    static double ValueAt(const std::byte* at) noexcept {
        return static_cast<std::int16_t>(LittleEndianWord(at));
    }
};

struct SwappedUnsignedWords {
    static constexpr std::size_t Bytes = 2;
    static double ValueAt(const std::byte* at) noexcept {
        const std::uint16_t word = LittleEndianWord(at);
        return static_cast<std::uint16_t>((word << 8U) | (word >> 8U));
    }
};

struct UnsignedBytes {
    static constexpr std::size_t Bytes = 1;
    static double ValueAt(const std::byte* at) noexcept {
        return static_cast<double>(std::to_integer<unsigned>(*at));
    }
};

template <class Sample>
void Convert(std::span<const std::byte> bytes, std::span<double> values) noexcept {
    const std::byte* at = bytes.data();
    for (double& value : values) {
        value = Sample::ValueAt(at);
        at += Sample::Bytes;
    }
}

// Each block goes straight into the values, so the file is never held a second time.
template <class Sample>
FileSamples ReadSamples(const FileToRead& file, const ReadServices& services) {
    FileBlocks blocks(file, services);
    const std::size_t count = PointCount(file, blocks.FileBytes());
    const auto progressSteps = static_cast<std::int32_t>(2 * count);
    services.progress.ShowMessage("Reading " + file.label + "...");
    services.progress.ShowProgress(progressSteps, 0);
    SampleBuffer<double> values(count);
    while (values.Size() < count) {
        const std::size_t done = values.Size();
        const std::uint64_t bytesLeft = (count - done) * Sample::Bytes;
        const std::span<const std::byte> block = blocks.Next(bytesLeft);
        if (block.size() < std::min<std::uint64_t>(services.blockBytes, bytesLeft)) {
            throw Error(ErrorNumber::InputPastEndOfFile, "Premature EOF reading " + file.label);
        }
        values.Resize(done + block.size() / Sample::Bytes);
        Convert<Sample>(block, values.Span().subspan(done));
        services.progress.ShowProgress(progressSteps, static_cast<std::int32_t>(2 * values.Size()));
        if (services.progress.IsCancelled()) {
            throw CancelError();
        }
    }
    blocks.RequireUnchanged();
    return {std::move(values), static_cast<std::int32_t>(count), blocks.FileDate()};
}

}  // namespace

FileSamples ReadBinaryDacFile(const FileToRead& file, SampleFormat format,
                              const ReadServices& services) {
    return format == SampleFormat::LittleEndianSigned
               ? ReadSamples<SignedWords>(file, services)
               : ReadSamples<SwappedUnsignedWords>(file, services);
}

FileSamples ReadBinaryMarkerFile(const FileToRead& file, const ReadServices& services) {
    return ReadSamples<UnsignedBytes>(file, services);
}

}  // namespace krv::waveform
