#include "simulator/device/WaveformStore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <system_error>
#include <vector>

#include "common/Crc32.h"
#include "common/Hexadecimal.h"
#include "common/Text.h"
#include "common/WholeFile.h"
#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {
namespace {

bool IsPlain(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == ' ' || character == '_' ||
           character == '-' || character == '.';
}

// Names that one of the systems keeps for devices, whatever ending follows.
bool IsDeviceName(std::string_view stem) {
    // Blanks at the end don't count for the system.
    const std::string_view base = TrimBlanks(stem.substr(0, stem.find('.')));
    constexpr std::array<std::string_view, 4> Devices{"CON", "PRN", "AUX", "NUL"};
    const auto is = [base](std::string_view device) { return EqualAnyCase(base, device); };
    const bool numbered =
        base.size() == 4 && base[3] >= '0' && base[3] <= '9' &&
        (EqualAnyCase(base.substr(0, 3), "COM") || EqualAnyCase(base.substr(0, 3), "LPT"));
    return numbered || std::any_of(Devices.begin(), Devices.end(), is);
}

// As the files have them: with the low byte first.
std::vector<std::byte> LittleEndian(std::span<const std::int16_t> codes) {
    std::vector<std::byte> bytes;
    bytes.reserve(codes.size_bytes());
    for (const std::int16_t code : codes) {
        bytes.push_back(static_cast<std::byte>(code & 0xFF));
        bytes.push_back(static_cast<std::byte>((code >> 8) & 0xFF));
    }
    return bytes;
}

std::error_code Prepare(WholeFile& file, std::span<const std::int16_t> codes) {
    if constexpr (std::endian::native == std::endian::little) {
        return file.Prepare(std::as_bytes(codes));
    }
    return file.Prepare(LittleEndian(codes));
}

// A plain name that looks as if it had been changed.
bool EndsLikeAChangedName(std::string_view stem) {
    constexpr std::size_t Ending = 9;
    return stem.size() >= Ending && stem[stem.size() - Ending] == '-' &&
           std::all_of(stem.end() - 8, stem.end(), [](char digit) {
               return (digit >= '0' && digit <= '9') || (digit >= 'A' && digit <= 'F') ||
                      (digit >= 'a' && digit <= 'f');
           });
}

}  // namespace

std::string StoredFileStem(std::string_view waveformName) {
    std::string stem(waveformName);
    std::replace_if(
        stem.begin(), stem.end(), [](char c) { return !IsPlain(c); }, '_');
    if (stem.empty() || stem.front() == '.' || IsDeviceName(stem)) {
        stem.insert(0, "_");
    }
    if (stem != waveformName || EndsLikeAChangedName(stem)) {
        Crc32 sum;
        sum.Add(std::as_bytes(std::span(waveformName)));
        stem += '-' + Hexadecimal(sum.Value());
    }
    return stem;
}

WaveformStore::WaveformStore(std::filesystem::path folder) : m_folder(std::move(folder)) {
    std::filesystem::create_directories(m_folder);
}

bool WaveformStore::Write(const Waveform& waveform) const {
    const bool separate = waveform.format == WaveformFormat::Separate;
    const std::span<const std::int16_t> none;
    const auto codes = waveform.codes.Span();
    return WriteArrays(waveform.name, std::array{StoredArray{".i.int16", separate ? codes : none},
                                                 StoredArray{".q.int16", waveform.qCodes.Span()},
                                                 StoredArray{".iq.int16", separate ? none : codes},
                                                 Markers(waveform)});
}

bool WaveformStore::WriteMarkers(const Waveform& waveform) const {
    return WriteArrays(waveform.name, std::array{Markers(waveform)});
}

WaveformStore::StoredArray WaveformStore::Markers(const Waveform& waveform) {
    return {".markers.int16", waveform.markers.Span()};
}

void WaveformStore::Drop(const std::string& name) const {
    Waveform none;
    none.name = name;
    static_cast<void>(Write(none));
}

bool WaveformStore::WriteArrays(const std::string& name,
                                std::span<const StoredArray> arrays) const {
    const std::string stem = StoredFileStem(name);
    std::vector<WholeFile> files;
    for (const StoredArray& array : arrays) {
        if (!array.codes.empty()) {
            files.emplace_back(m_folder / (stem + array.ending));
            if (Prepare(files.back(), array.codes)) {
                return false;
            }
        }
    }
    bool written = true;
    for (const StoredArray& array : arrays) {
        if (array.codes.empty()) {
            std::error_code failure;
            std::filesystem::remove(m_folder / (stem + array.ending), failure);
            written &= !failure;
        }
    }
    for (WholeFile& file : files) {
        written &= !file.Finish();
    }
    return written;
}

}  // namespace krv::simulator
