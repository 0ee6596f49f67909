// The figures of a waveform as lines of text.
#pragma once

#include <string>

#include "analysis/Figures.h"

namespace krv::plots {

// Each line has a label of 14 characters in front, and a line feed behind it.
[[nodiscard]] std::string FiguresAsText(const analysis::Figures& figures);

}  // namespace krv::plots
