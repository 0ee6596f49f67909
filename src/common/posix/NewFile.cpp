#include "common/NewFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace krv {
namespace {

std::FILE* Open(const std::filesystem::path& path, int flags) noexcept {
    const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666);
    std::FILE* const stream = file < 0 ? nullptr : ::fdopen(file, "wb");
    if (file >= 0 && stream == nullptr) {
        const int reason = errno;
        ::close(file);
        errno = reason;
    }
    return stream;
}

}  // namespace

std::FILE* OpenNewFile(const std::filesystem::path& path) noexcept {
    return Open(path, O_CREAT | O_EXCL);
}

std::FILE* OpenExistingFile(const std::filesystem::path& path) noexcept {
    return Open(path, 0);
}

}  // namespace krv
