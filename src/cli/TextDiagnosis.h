// TextDiagnosis: why a file isn't text that holds nothing but numbers.
#pragma once

#include <string>

#include "common/Numbers.h"

namespace krv::cli {

// One line: where in the file the first text stands that is no number, what it is, and what the
// file looks like. Empty when there is nothing to be found. Throws nothing for a file that can't be
// read.
[[nodiscard]] std::string DiagnoseText(const std::string& file, NumberFormat format);

}  // namespace krv::cli
