#include "waveform/readers/FileReading.h"

#include <algorithm>

namespace krv::waveform {

FileBlocks::FileBlocks(const FileToRead& file, const ReadServices& services)
    : m_file(file),
      m_services(services),
      m_fileBytes(services.files.FileSize(file.fileName)),
      m_fileDate(services.files.DateLastModified(file.fileName)) {}

std::span<const std::byte> FileBlocks::Next(std::uint64_t maximum) {
    if (m_block.Data() == nullptr) {
        m_block = PageMemory(m_services.blockBytes);
        m_block.Commit(m_services.blockBytes);
    }
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(m_services.blockBytes, maximum));
    const std::span block(static_cast<std::byte*>(m_block.Data()), wanted);
    return block.first(Read(block));
}

std::size_t FileBlocks::Read(std::span<std::byte> destination) {
    if (m_content == nullptr) {
        m_content = m_services.files.OpenToRead(m_file.fileName);
    }
    const std::size_t count = m_content->Read(destination);
    m_bytesRead += count;
    return count;
}

void FileBlocks::RequireUnchanged() const {
    if (m_services.files.DateLastModified(m_file.fileName) != m_fileDate) {
        throw FileChangedError();
    }
}

Error FileChangedError() {
    return Error(ErrorNumber::PathFileAccess,
                 "The file was changed while it was being read.  Please try again.");
}

}  // namespace krv::waveform
