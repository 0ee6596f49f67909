// A sheet as comma separated values and back. UTF-8, with or without a byte order mark; lines end
// with CR, LF or both.
#pragma once

#include <string>
#include <string_view>

#include "bench/book/Sheet.h"

namespace krv::bench {

struct CsvFormat {
    // ',', ';' or a tab.
    char separator = ',';
};

// The first line says what the separator is, by what stands outside quotes: a tab, else ';', else
// ','. With ';' and tabs, "," is a decimal separator too. Throws Error 321 with line and column (in
// characters) of what is wrong: an open quote, text after a closing quote, bytes that are no UTF-8,
// more rows or columns than a sheet has, or so few cells so far apart that only damage or malice
// puts them there.
[[nodiscard]] Sheet ReadCsv(std::string_view bytes, CsvFormat& found);

// Numbers with "." and all their digits, so that reading gives the same doubles. Lines end with CR
// LF.
[[nodiscard]] std::string WriteCsv(const Sheet& sheet, CsvFormat format);

}  // namespace krv::bench
