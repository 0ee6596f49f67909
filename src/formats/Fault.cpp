#include "formats/Fault.h"

#include "common/Hexadecimal.h"

namespace krv::formats {
namespace {

constexpr std::size_t LongestQuote = 40;

}  // namespace

Error FileFault(const std::string& file, std::string_view reason) {
    return Error(ErrorNumber::InvalidFileFormat, file + ": " + std::string(reason));
}

Error ByteFault(const std::string& file, std::uint64_t byte, std::string_view reason) {
    return FileFault(file + ", byte " + std::to_string(byte), reason);
}

Error LineFault(const std::string& file, std::uint64_t line, std::size_t column,
                std::string_view reason) {
    return FileFault(file + ", line " + std::to_string(line) + ", column " + std::to_string(column),
                     reason);
}

std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text.substr(0, LongestQuote)) {
        const bool isPlain = character >= ' ' && character <= '~';
        quoted += isPlain ? std::string(1, character)
                          : "\\x" + Hexadecimal(static_cast<unsigned char>(character), 2);
    }
    return quoted + (text.size() > LongestQuote ? "...'" : "'");
}

}  // namespace krv::formats
