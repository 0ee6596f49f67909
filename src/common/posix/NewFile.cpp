#include "common/NewFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace krv {
namespace {

using std::chrono::milliseconds;

int Open(const std::filesystem::path& path, int flags) noexcept {
    return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666);
}

bool IsPipe(const std::filesystem::path& path) noexcept {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

// To open a pipe without a reader would wait for one for ever.
int OpenWithinLimit(const std::filesystem::path& path) noexcept {
    constexpr milliseconds Limit{2000};
    constexpr milliseconds Pause{20};
    const bool isPipe = IsPipe(path);
    int file = Open(path, O_NONBLOCK);
    for (milliseconds waited{0}; file < 0 && errno == ENXIO && waited < Limit && isPipe;
         waited += Pause) {
        std::this_thread::sleep_for(Pause);
        file = Open(path, O_NONBLOCK);
    }
    // What is written waits for the reader as usual.
    if (file >= 0) {
        static_cast<void>(::fcntl(file, F_SETFL, ::fcntl(file, F_GETFL) & ~O_NONBLOCK));
    }
    return file;
}

std::FILE* StreamOn(int file) noexcept {
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
    return StreamOn(Open(path, O_CREAT | O_EXCL));
}

std::FILE* OpenExistingFile(const std::filesystem::path& path) noexcept {
    return StreamOn(OpenWithinLimit(path));
}

}  // namespace krv
