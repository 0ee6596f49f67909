#include "formats/Formats.h"

#include <algorithm>
#include <array>

#include "formats/Fault.h"
#include "formats/Inflate.h"
#include "formats/Readers.h"

namespace krv::formats {
namespace {

Opening LookAt(const InputFile& file, const OpenOptions& options) {
    return {file, ReadPiece(file, 0, BeginningBytes), file.files.FileSize(file.name), options};
}

const Format* Recognise(const Opening& opening) {
    const auto formats = AllFormats();
    const auto found = std::ranges::find_if(
        formats, [&](const Format& format) { return format.recognises(opening); });
    return found == formats.end() ? nullptr : &*found;
}

}  // namespace

std::span<const Format> AllFormats() noexcept {
    static const std::array<Format, 8> formats{{
        {"WAV", "WAV, RF64 and BW64 with PCM values of 8 to 32 bits or floats", nullptr, IsWav,
         OpenWav},
        {"NumPy array", ".npy: real or complex numbers, points by channels", nullptr, IsNumpyArray,
         OpenNumpyArray},
        {"NumPy archive", ".npz: arrays of equal length, stored or compressed", MissingToInflate(),
         IsNumpyArchive, OpenNumpyArchive},
        {"SigMF", "either file of a pair, .sigmf-meta and .sigmf-data", nullptr, IsSigmf,
         OpenSigmf},
        {"SigMF archive", ".sigmf, .sigmf.gz and .sigmf.zip", MissingToInflate(), IsSigmfArchive,
         OpenSigmfArchive},
        {"MATLAB", ".mat of the levels 4 to 7.3: arrays of equal length, also in a structure",
         MissingToReadMatlab(), IsMatlab, OpenMatlab},
        {"raw samples", "with --raw, or named .cfile, .cf32, .cs16, .cs8, .cu8 and the like",
         nullptr, IsRaw, OpenRaw},
        {"text table", "CSV and columns of numbers, real or complex, in UTF-8 or UTF-16", nullptr,
         IsTable, OpenTable},
    }};
    return formats;
}

const Format* RecogniseFormat(const InputFile& file) {
    return Recognise(LookAt(file, {}));
}

std::unique_ptr<Recording> OpenRecording(const InputFile& file, const OpenOptions& options) {
    const Opening opening = LookAt(file, options);
    if (options.raw) {
        return OpenRaw(opening);
    }
    const Format* const format = Recognise(opening);
    if (format == nullptr) {
        throw FileFault(file.name,
                        "The format isn't known. 'krv formats' lists those that are; for samples "
                        "without a header say what they are with --raw, as in --raw ci16_le.");
    }
    return format->open(opening);
}

}  // namespace krv::formats
