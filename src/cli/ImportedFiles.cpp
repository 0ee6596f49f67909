#include "cli/ImportedFiles.h"

namespace krv::cli {

std::uint64_t ImportedFiles::FileSize(const std::string& path) {
    const auto made = m_made.find(path);
    return made != m_made.end() ? made->second.bytes : m_files.FileSize(path);
}

ports::FileTime ImportedFiles::DateLastModified(const std::string& path) {
    // What is made stays as it is.
    return m_made.contains(path) ? ports::FileTime{} : m_files.DateLastModified(path);
}

std::unique_ptr<ports::SequentialFile> ImportedFiles::OpenToRead(const std::string& path) {
    const auto made = m_made.find(path);
    return made != m_made.end() ? made->second.open() : m_files.OpenToRead(path);
}

}  // namespace krv::cli
