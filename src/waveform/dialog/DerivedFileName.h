// The auto-find rule: the name of the Q file or the marker file that goes with an I file.
#pragma once

#include <string>
#include <string_view>

#include "ports/desktop/FileSystem.h"

namespace krv::waveform {

// What takes the place of an upper-case and of a lower-case "I".
struct DerivedNameRule {
    std::string_view forUpper;
    std::string_view forLower;
};
inline constexpr DerivedNameRule QFileRule{"Q", "q"};
inline constexpr DerivedNameRule MarkerFileRule{"Marker", "marker"};

// The length of the folder part: up to and including the last separator of either kind.
[[nodiscard]] std::size_t FolderLength(std::string_view path) noexcept;

// Replaces one "I" at a time, from the left, in what follows the folder; the first result that
// names an existing file wins. Empty when none does.
[[nodiscard]] std::string DerivedFileName(const std::string& iFileName, const DerivedNameRule& rule,
                                          ports::FileSystem& files);

}  // namespace krv::waveform
