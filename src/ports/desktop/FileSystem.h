// Files as the readers need them. Paths are UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace krv::ports {

// The date last modified, in the file system's own ticks: only compared for equality.
struct FileTime {
    std::int64_t ticks = 0;
    friend bool operator==(FileTime, FileTime) noexcept = default;
};

class SequentialFile {
 public:
    virtual ~SequentialFile() = default;
    // Fills the span from where the last read stopped; returns the number of bytes read, which is
    // less than the span only at the end of the file. Throws Error 57 when the device fails.
    virtual std::size_t Read(std::span<std::byte> destination) = 0;
};

class FileSystem {
 public:
    virtual ~FileSystem() = default;
    // True for a regular file; false for anything else and for names without a file.
    virtual bool FileExists(const std::string& path) = 0;
    // The next three throw Error 53 when there is no such file, 70 or 75 when it may not be read,
    // with a description that names the file.

    // In bytes.
    virtual std::uint64_t FileSize(const std::string& path) = 0;
    virtual FileTime DateLastModified(const std::string& path) = 0;
    virtual std::unique_ptr<SequentialFile> OpenToRead(const std::string& path) = 0;
};

}  // namespace krv::ports
