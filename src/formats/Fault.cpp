#include "formats/Fault.h"

namespace krv::formats {
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

}  // namespace krv::formats
