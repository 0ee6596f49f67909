#include "waveform/run/DestinationRules.h"

#include "common/Text.h"

namespace krv::waveform {

std::string DestinationNameFault(std::string_view name) {
    if (name.empty()) {
        return "KRV Destination File Name must be entered.";
    }
    if (CharacterCount(name) > MaxDestinationNameCharacters) {
        return "KRV Destination File Name must be less than 24 characters.";
    }
    return {};
}

std::string SelectedFileFault(std::string_view name, std::string_view selectedFile) {
    if (!EqualIgnoringCase(name, selectedFile)) {
        return {};
    }
    return "KRV Destination File Name is the same as the KRV's currently selected arb file." +
           std::string(CrLf) +
           "Enter a different file name or deselect this file from the KRV front panel.";
}

}  // namespace krv::waveform
