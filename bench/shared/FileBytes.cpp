#include "bench/shared/FileBytes.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "common/Error.h"

namespace krv::bench {
namespace {

std::filesystem::path PathOf(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

}  // namespace

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

// Beside the file first, so that a full disk doesn't cost what was there.
void WriteFileBytes(const std::string& path, const std::string& bytes) {
    const std::filesystem::path target = PathOf(path);
    std::filesystem::path fresh = target;
    fresh += ".saving";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code failure;
    if (file) {
        std::filesystem::rename(fresh, target, failure);
    }
    if (!file || failure) {
        std::filesystem::remove(fresh, failure);
        throw Error(ErrorNumber::PathFileAccess, "The file \"" + path + "\" can't be written.");
    }
}

std::string FileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("\\/") + 1);
}

}  // namespace krv::bench
