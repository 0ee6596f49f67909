// StandardFiles: the file system behind the port, by means of the standard library.
//
// Files are read without a buffer in between, straight into the caller's memory, so callers should
// ask for large blocks. An object holds no state; each opened file belongs to one thread.
#pragma once

#include "ports/desktop/FileSystem.h"

namespace krv::files {

// Descriptions of errors name the file and say what can be done.
class StandardFiles final : public ports::FileSystem {
 public:
    // False for folders, pipes and devices, none of which is opened to find out.
    bool FileExists(const std::string& path) override;
    std::uint64_t FileSize(const std::string& path) override;
    ports::FileTime DateLastModified(const std::string& path) override;
    // A folder, a pipe or a device is Error 75.
    std::unique_ptr<ports::SequentialFile> OpenToRead(const std::string& path) override;
};

}  // namespace krv::files
