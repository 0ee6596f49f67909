// A sheet as comma separated values and back. UTF-8, with or without a byte order mark; lines end
// with LF, or with CR and LF.
#pragma once

#include <string>
#include <string_view>

#include "bench/book/Sheet.h"

namespace krv::bench {

// Throws Error 321 with the line of what is wrong: an open quote, text after a closing quote, bytes
// that are no UTF-8, more rows or columns than a sheet has, or so few cells so far apart that only
// damage or malice puts them there.
[[nodiscard]] Sheet ReadCsv(std::string_view bytes);

// Numbers with all their digits, so that reading gives the same doubles. Lines end with CR LF.
[[nodiscard]] std::string WriteCsv(const Sheet& sheet);

}  // namespace krv::bench
