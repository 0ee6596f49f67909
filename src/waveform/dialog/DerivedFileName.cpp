#include "waveform/dialog/DerivedFileName.h"

namespace krv::waveform {

std::size_t FolderLength(std::string_view path) noexcept {
    const std::size_t separator = path.find_last_of("\\/");
    return separator == std::string_view::npos ? 0 : separator + 1;
}

std::string DerivedFileName(const std::string& iFileName, const DerivedNameRule& rule,
                            ports::FileSystem& files) {
    for (std::size_t at = FolderLength(iFileName); at < iFileName.size(); ++at) {
        const char letter = iFileName[at];
        if (letter != 'I' && letter != 'i') {
            continue;
        }
        std::string candidate = iFileName;
        candidate.replace(at, 1, letter == 'I' ? rule.forUpper : rule.forLower);
        if (files.FileExists(candidate)) {
            return candidate;
        }
    }
    return {};
}

}  // namespace krv::waveform
