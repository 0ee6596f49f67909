// FolderLock: a folder that one program at a time writes to. The lock ends with its object, and
// with the program however that ends. The platform's part is in the folders `posix` and `windows`.
#pragma once

#include <cstdint>
#include <filesystem>

namespace krv {

class FolderLock {
 public:
    // The folder must be there.
    explicit FolderLock(const std::filesystem::path& folder) noexcept;
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

    // False while another one, of this program or another, holds the folder.
    [[nodiscard]] bool IsHeld() const noexcept { return m_handle != None; }

 private:
    static constexpr std::intptr_t None = -1;
    std::intptr_t m_handle = None;
};

}  // namespace krv
