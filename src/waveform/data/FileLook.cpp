#include "waveform/data/FileLook.h"

#include <array>

namespace krv::waveform {
namespace {

using namespace std::string_view_literals;

struct Beginning {
    std::string_view bytes;
    // Where further bytes stand that must match, too.
    std::size_t offset;
    std::string_view more;
    std::string_view look;
};

constexpr std::array Beginnings{
    Beginning{"RIFF", 8, "WAVE", "a WAV file"},
    Beginning{"RIFX", 8, "WAVE", "a WAV file with the high byte first"},
    Beginning{"RF64", 8, "WAVE", "a WAV file"},
    Beginning{"BW64", 8, "WAVE", "a WAV file"},
    Beginning{"\x93NUMPY", 0, "", "a NumPy file"},
    Beginning{"MATLAB ", 126, "IM", "a MATLAB file"},
    Beginning{"MATLAB ", 126, "MI", "a MATLAB file"},
    Beginning{"\x89HDF\r\n\x1A\n", 0, "", "an HDF5 file"},
    Beginning{"PK\3\4"sv, 0, "", "a ZIP archive"},
    Beginning{"PK\5\6"sv, 0, "", "an empty ZIP archive"},
    // The method, and whether it holds a name.
    Beginning{"\x1F\x8B\x08\x00"sv, 0, "", "a gzip archive"},
    Beginning{"\x1F\x8B\x08\x08"sv, 0, "", "a gzip archive"},
    Beginning{"%PDF-", 0, "", "a PDF document"},
};

}  // namespace

std::string_view FileLook(std::span<const std::byte> beginning) noexcept {
    const std::string_view text(reinterpret_cast<const char*>(beginning.data()), beginning.size());
    for (const Beginning& known : Beginnings) {
        if (text.starts_with(known.bytes) && text.size() >= known.offset &&
            text.substr(known.offset).starts_with(known.more)) {
            return known.look;
        }
    }
    return {};
}

}  // namespace krv::waveform
