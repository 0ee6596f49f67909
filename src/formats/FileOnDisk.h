// FileOnDisk: an input file under a path of this computer, for libraries that open files
// themselves. What is in memory is copied into a folder of its own among the temporary ones, which
// goes with this.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "formats/ByteStreams.h"

namespace krv::formats {

class FileOnDisk {
 public:
    // Throws Error 75 where the copy can't be written, and the file system's errors.
    explicit FileOnDisk(const InputFile& file);

    // In UTF-8.
    [[nodiscard]] const std::string& Path() const noexcept { return m_path; }

 private:
    // Nobody else's, and removed with what is in it.
    class OwnFolder {
     public:
        OwnFolder();
        OwnFolder(const OwnFolder&) = delete;
        OwnFolder& operator=(const OwnFolder&) = delete;
        ~OwnFolder();
        [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_path; }

     private:
        std::filesystem::path m_path;
    };

    std::optional<OwnFolder> m_folder;
    std::string m_path;
};

}  // namespace krv::formats
