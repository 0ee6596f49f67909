#include "simulator/device/WaveformStore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <system_error>
#include <vector>

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

constexpr const char* MarkersEnding = ".markers.int16";
// Of the file without which there is no waveform.
constexpr std::array CodesEndings{".i.int16", ".iq.int16"};

std::error_code Prepare(WholeFile& file, std::span<const std::int16_t> codes) {
    if constexpr (std::endian::native == std::endian::little) {
        return file.Prepare(std::as_bytes(codes));
    }
    return file.Prepare(LittleEndian(codes));
}

}  // namespace

std::string StoredFileStem(std::string_view waveformName) {
    const bool isReserved = waveformName.starts_with('.') || IsDeviceName(waveformName);
    std::string stem;
    for (const char character : waveformName) {
        if (IsPlain(character) && !(stem.empty() && isReserved)) {
            stem += character;
        } else {
            stem += '%' + Hexadecimal(static_cast<unsigned char>(character), 2);
        }
    }
    return stem;
}

WaveformStore::WaveformStore(std::filesystem::path folder) : m_folder(std::move(folder)) {
    std::filesystem::create_directories(m_folder);
}

bool WaveformStore::Write(const Waveform& waveform) {
    const bool separate = waveform.format == WaveformFormat::Separate;
    const std::span<const std::int16_t> none;
    const auto codes = waveform.codes.Span();
    m_upToDate.erase(waveform.name);
    // Codes come last.
    const bool written = Replace(
        waveform.name,
        std::array{StoredArray{".q.int16", waveform.qCodes.Span()},
                   StoredArray{MarkersEnding, codes.empty() ? none : waveform.markers.Span()},
                   StoredArray{CodesEndings[0], separate ? codes : none},
                   StoredArray{CodesEndings[1], separate ? none : codes}});
    if (written && !codes.empty()) {
        m_upToDate.insert(waveform.name);
    }
    return written;
}

bool WaveformStore::WriteMarkers(const Waveform& waveform) {
    if (m_upToDate.erase(waveform.name) == 0) {
        return Write(waveform);
    }
    const auto markers = waveform.markers.Span();
    WholeFile file(PathOf(waveform.name, MarkersEnding));
    const bool written = markers.empty() ? Remove(waveform.name, MarkersEnding)
                                         : !Prepare(file, markers) && !file.Finish();
    if (written) {
        m_upToDate.insert(waveform.name);
    }
    return written;
}

void WaveformStore::Drop(const std::string& name) {
    Waveform none;
    none.name = name;
    static_cast<void>(Write(none));
}

std::filesystem::path WaveformStore::PathOf(const std::string& name, const char* ending) const {
    return m_folder / (StoredFileStem(name) + ending);
}

bool WaveformStore::Remove(const std::string& name, const char* ending) const {
    return !RemoveRegularFile(PathOf(name, ending));
}

bool WaveformStore::Replace(const std::string& name, std::span<const StoredArray> arrays) const {
    std::vector<WholeFile> files;
    for (const StoredArray& array : arrays) {
        if (!array.codes.empty()) {
            files.emplace_back(PathOf(name, array.ending));
            if (Prepare(files.back(), array.codes)) {
                return false;
            }
        }
    }
    const auto remove = [&](const char* ending) { return Remove(name, ending); };
    const auto isGone = [&](const StoredArray& array) {
        return !array.codes.empty() || Remove(name, array.ending);
    };
    return std::ranges::all_of(CodesEndings, remove) && std::ranges::all_of(arrays, isGone) &&
           std::ranges::all_of(files, [](WholeFile& file) { return !file.Finish(); });
}

}  // namespace krv::simulator
