// FileOnDisk: an input file under a path of this computer, for libraries that open files
// themselves. What is in memory is copied into a temporary file, which goes with this. Not on
// Windows.
#pragma once

#include <optional>
#include <string>

#include "common/TemporaryFile.h"
#include "formats/ByteStreams.h"

namespace krv::formats {

class FileOnDisk {
 public:
    // Throws Error 75 where the copy can't be written, and the file system's errors.
    explicit FileOnDisk(const InputFile& file);

    // In UTF-8.
    [[nodiscard]] const std::string& Path() const noexcept {
        return m_copy ? m_copy->Path() : m_path;
    }

 private:
    std::optional<TemporaryFile> m_copy;
    std::string m_path;
};

}  // namespace krv::formats
