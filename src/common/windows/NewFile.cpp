#include "common/NewFile.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>

namespace krv {
namespace {

std::FILE* Open(const std::filesystem::path& path, int flags) noexcept {
    const int file = _wopen(path.c_str(), _O_WRONLY | _O_BINARY | flags, _S_IREAD | _S_IWRITE);
    std::FILE* const stream = file < 0 ? nullptr : _fdopen(file, "wb");
    if (file >= 0 && stream == nullptr) {
        const int reason = errno;
        _close(file);
        errno = reason;
    }
    return stream;
}

}  // namespace

std::FILE* OpenNewFile(const std::filesystem::path& path) noexcept {
    return Open(path, _O_CREAT | _O_EXCL);
}

std::FILE* OpenExistingFile(const std::filesystem::path& path) noexcept {
    return Open(path, 0);
}

}  // namespace krv
