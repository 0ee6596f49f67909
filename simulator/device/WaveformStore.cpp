#include "simulator/device/WaveformStore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fstream>
#include <system_error>

#include "common/Crc32.h"
#include "common/Hexadecimal.h"
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
    const std::string_view base = stem.substr(0, stem.find('.'));
    constexpr std::array<std::string_view, 4> Devices{"CON", "PRN", "AUX", "NUL"};
    const auto is = [base](std::string_view device) { return EqualAnyCase(base, device); };
    const bool numbered =
        base.size() == 4 && base[3] >= '0' && base[3] <= '9' &&
        (EqualAnyCase(base.substr(0, 3), "COM") || EqualAnyCase(base.substr(0, 3), "LPT"));
    return numbered || std::any_of(Devices.begin(), Devices.end(), is);
}

bool WriteLittleEndian(std::ofstream& file, std::span<const std::int16_t> codes) {
    if constexpr (std::endian::native == std::endian::little) {
        file.write(reinterpret_cast<const char*>(codes.data()),
                   static_cast<std::streamsize>(codes.size_bytes()));
    } else {
        for (const std::int16_t code : codes) {
            file.put(static_cast<char>(code & 0xFF)).put(static_cast<char>(code >> 8));
        }
    }
    file.close();
    return !file.fail();
}

}  // namespace

std::string StoredFileStem(std::string_view waveformName) {
    std::string stem(waveformName);
    std::replace_if(
        stem.begin(), stem.end(), [](char c) { return !IsPlain(c); }, '_');
    if (stem.empty() || stem.front() == '.' || IsDeviceName(stem)) {
        stem.insert(0, "_");
    }
    if (stem != waveformName) {
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
    bool written = WriteCodes(waveform, ".i.int16", separate ? codes : none);
    written &= WriteCodes(waveform, ".q.int16", waveform.qCodes.Span());
    written &= WriteCodes(waveform, ".iq.int16", separate ? none : codes);
    written &= WriteMarkers(waveform);
    return written;
}

bool WaveformStore::WriteMarkers(const Waveform& waveform) const {
    return WriteCodes(waveform, ".markers.int16", waveform.markers.Span());
}

void WaveformStore::Drop(const std::string& name) const {
    Waveform none;
    none.name = name;
    static_cast<void>(Write(none));
}

bool WaveformStore::WriteCodes(const Waveform& waveform, const char* ending,
                               std::span<const std::int16_t> codes) const {
    const auto path = m_folder / (StoredFileStem(waveform.name) + ending);
    if (codes.empty()) {
        std::error_code failure;
        std::filesystem::remove(path, failure);
        return !failure;
    }
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    return file && WriteLittleEndian(file, codes);
}

}  // namespace krv::simulator
