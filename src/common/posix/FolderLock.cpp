#include "common/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace krv {

FolderLock::FolderLock(const std::filesystem::path& folder) noexcept {
    const int file = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) == 0) {
        m_handle = file;
    } else if (file >= 0) {
        ::close(file);
    }
}

FolderLock::~FolderLock() {
    if (IsHeld()) {
        ::close(static_cast<int>(m_handle));
    }
}

}  // namespace krv
