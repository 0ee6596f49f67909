#include "waveform/dialog/AutoName.h"

#include "common/Text.h"
#include "waveform/dialog/DerivedFileName.h"

namespace krv::waveform {
namespace {

constexpr std::size_t MaxNameLength = 23;

bool IsPlain(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '.';
}

// The bytes of the character that starts here: a whole UTF-8 sequence, or one byte that is none.
std::size_t CharacterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t wanted = lead >= 0xF0 ? 4U : lead >= 0xE0 ? 3U : lead >= 0xC0 ? 2U : 1U;
    std::size_t length = 1;
    while (length < wanted && length < text.size() &&
           (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return length == wanted ? length : 1;
}

}  // namespace

std::string AutoName(std::string_view iFileName) {
    std::string_view stem = TrimBlanks(iFileName);
    stem.remove_prefix(FolderLength(stem));
    stem = stem.substr(0, stem.rfind('.'));

    std::string name;
    while (!stem.empty() && name.size() < MaxNameLength) {
        const bool plain = IsPlain(static_cast<unsigned char>(stem.front()));
        name += plain ? stem.front() : '_';
        stem.remove_prefix(CharacterLength(stem));
    }
    return name.empty() ? std::string(UnnamedAutoName) : name;
}

}  // namespace krv::waveform
