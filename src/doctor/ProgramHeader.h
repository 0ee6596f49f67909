// The start of a Windows program's or library's file.
#pragma once

#include <istream>

namespace krv::doctor {

// The word size of the programs that it is for: 64 or 32; 0 for a file that is no program, or one
// for another processor.
[[nodiscard]] int ProgramWordSize(std::istream& file);

}  // namespace krv::doctor
