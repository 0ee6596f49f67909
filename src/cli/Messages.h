// Messages: krv's own sentences on standard error, and how they stand out.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace krv::cli {

// Shown by a PrintableStream whose user wants colours, and by no other stream.
enum class Style : std::uint8_t { Plain, Error, Warning };
std::ostream& operator<<(std::ostream& stream, Style style);

void PrintFailure(std::ostream& err, std::string_view text);
void PrintWarning(std::ostream& err, std::string_view text);

}  // namespace krv::cli
