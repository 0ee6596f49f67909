// What a cell shows and what a typed entry means. The decimal separator is always "."; a cell holds
// values only, no formulas.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/Value.h"

namespace krv::bench {

// The codes of cells that hold an error.
namespace CellError {
inline constexpr std::int32_t Null = 2000;
inline constexpr std::int32_t DivisionByZero = 2007;
inline constexpr std::int32_t WrongValue = 2015;
inline constexpr std::int32_t Reference = 2023;
inline constexpr std::int32_t Name = 2029;
inline constexpr std::int32_t Number = 2036;
inline constexpr std::int32_t NotAvailable = 2042;
}  // namespace CellError

// A number, TRUE or FALSE, an error such as "#N/A", nothing, or else text. An apostrophe in front
// makes the rest text whatever it looks like.
[[nodiscard]] Value ParseCellText(std::string_view text);

// What the grid shows: numbers with up to 15 significant digits, dates as their day numbers.
[[nodiscard]] std::string CellText(const Value& value);

// What one would have to type to get exactly this value: numbers with all their digits, dates as
// their day numbers, and an apostrophe before text that would be read as something else.
[[nodiscard]] std::string CellEntry(const Value& value);

}  // namespace krv::bench
