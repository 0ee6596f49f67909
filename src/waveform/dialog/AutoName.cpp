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

}  // namespace

std::string AutoName(std::string_view iFileName) {
    std::string_view stem = TrimBlanks(iFileName);
    stem.remove_prefix(FolderLength(stem));
    stem = stem.substr(0, stem.rfind('.'));

    std::string name;
    while (!stem.empty() && name.size() < MaxNameLength) {
        const bool plain = IsPlain(static_cast<unsigned char>(stem.front()));
        name += plain ? stem.front() : '_';
        stem.remove_prefix(CharacterBytes(stem));
    }
    return name.empty() ? std::string(UnnamedAutoName) : name;
}

}  // namespace krv::waveform
