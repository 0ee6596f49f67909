#include "bench/shared/FileBytes.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "common/Error.h"
#include "common/WholeFile.h"

namespace krv::bench {
std::string ReadFileBytes(const std::string& path) {
    std::error_code failure;
    if (!std::filesystem::exists(PathOf(path), failure)) {
        throw Error(ErrorNumber::FileNotFound, "There is no file \"" + path + "\".");
    }
    std::ifstream file(PathOf(path), std::ios::binary | std::ios::ate);
    std::string bytes;
    // A folder opens on some systems, and has no size.
    const std::streamoff size = file && !std::filesystem::is_directory(PathOf(path), failure)
                                    ? std::streamoff(file.tellg())
                                    : -1;
    if (size > 0) {
        bytes.resize(static_cast<std::size_t>(size));
        file.seekg(0);
        file.read(bytes.data(), static_cast<std::streamsize>(size));
    }
    if (size < 0 || !file) {
        throw Error(ErrorNumber::PathFileAccess, "The file \"" + path + "\" can't be read.");
    }
    return bytes;
}

void WriteFileBytes(const std::string& path, const std::string& bytes) {
    if (const auto failure = WriteWholeFile(PathOf(path), std::as_bytes(std::span(bytes)))) {
        throw Error(ErrorNumber::PathFileAccess,
                    "The file \"" + path + "\" can't be written: " + failure.message());
    }
}

std::string FileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("\\/") + 1);
}

}  // namespace krv::bench
