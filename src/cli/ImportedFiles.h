// ImportedFiles: the files of this computer, and in front of them some that are only made when they
// are read: imported waveforms in the form that the dialog takes, and standard input.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "common/files/StandardFiles.h"
#include "formats/ByteStreams.h"
#include "formats/ProductFiles.h"
#include "ports/desktop/FileSystem.h"

namespace krv::cli {

class ImportedFiles final : public ports::FileSystem {
 public:
    // From now on the name stands for this file.
    void Put(const std::string& name, formats::ProductFile file) { m_made[name] = std::move(file); }
    [[nodiscard]] bool Holds(const std::string& name) const { return m_made.contains(name); }
    // What an import reads under the name.
    [[nodiscard]] formats::InputFile Input(const std::string& name) {
        return {*this, name, Holds(name)};
    }

    bool FileExists(const std::string& path) override {
        return m_made.contains(path) || m_files.FileExists(path);
    }
    std::uint64_t FileSize(const std::string& path) override;
    ports::FileTime DateLastModified(const std::string& path) override;
    std::unique_ptr<ports::SequentialFile> OpenToRead(const std::string& path) override;

 private:
    files::StandardFiles m_files;
    std::map<std::string, formats::ProductFile> m_made;
};

}  // namespace krv::cli
