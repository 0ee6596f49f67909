#include "doctor/ProgramHeader.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace krv::doctor {
namespace {

constexpr std::uint32_t ForX86 = 0x014C;
constexpr std::uint32_t ForX64 = 0x8664;

// Low byte first; beyond the file's end there are zeros.
template <std::size_t Bytes>
std::uint32_t NumberAt(std::istream& file, std::uint32_t place) {
    std::array<char, Bytes> bytes{};
    file.clear();
    file.seekg(place);
    file.read(bytes.data(), bytes.size());
    if (!file) {
        return 0;
    }
    std::uint32_t number = 0;
    for (std::size_t index = Bytes; index-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(bytes[index]);
    }
    return number;
}

}  // namespace

int ProgramWordSize(std::istream& file) {
    constexpr std::uint32_t placeOfHeader = 0x3C;
    const std::uint32_t header = NumberAt<4>(file, placeOfHeader);
    if (NumberAt<2>(file, 0) != 0x5A4D || NumberAt<4>(file, header) != 0x00004550) {
        return 0;
    }
    switch (NumberAt<2>(file, header + 4)) {
        case ForX64:
            return 64;
        case ForX86:
            return 32;
        default:
            return 0;
    }
}

}  // namespace krv::doctor
