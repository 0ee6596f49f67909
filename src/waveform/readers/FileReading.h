// What the readers of waveform and marker files share: what they are given, what they hand back,
// and how they get at a file's bytes.
//
// A reader is called on the user-interface thread and returns the loaded channel; its date is taken
// before the first byte is read. It fails with
// an Error whose description is ready to be shown:
//   6, 13  the text is not all numbers that a double can hold
//   62     the file ended before all its points were read
//   321    the file's size does not go with the format
//   1001   the user cancelled
// Errors of the file system and std::bad_alloc pass through. Nothing is kept of a failed read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "common/Error.h"
#include "common/Numbers.h"
#include "common/memory/PageMemory.h"
#include "ports/desktop/Clock.h"
#include "ports/desktop/FileSystem.h"
#include "waveform/data/Channel.h"
#include "waveform/data/RunProgress.h"

namespace krv::waveform {

struct ReadServices {
    ports::FileSystem& files;
    ports::Clock& clock;
    PhaseProgress& progress;
    NumberFormat numberFormat;
    // How much is read at once. Aligned reads of this size run as fast as a mapped file.
    std::size_t blockBytes = std::size_t{256} << 10;
};

struct FileToRead {
    // The path in UTF-8.
    std::string fileName;
    // What the user calls it: "I-File", "Q-File" or "Marker File".
    std::string label;
    // Introduces a conversion error; an empty prefix suppresses the report of the line.
    std::string errorPrefix;
};

// One file, read from beginning to end in blocks. The size and date are taken when it is opened.
class FileBlocks {
 public:
    FileBlocks(const FileToRead& file, const ReadServices& services);

    [[nodiscard]] std::uint64_t FileBytes() const noexcept { return m_fileBytes; }
    [[nodiscard]] ports::FileTime FileDate() const noexcept { return m_fileDate; }
    // Bytes handed out so far.
    [[nodiscard]] std::uint64_t BytesRead() const noexcept { return m_bytesRead; }

    // The next bytes, at most a block and at most `maximum`, less only at the end of the file. They
    // are valid until the next call. The file is opened with the first call.
    std::span<const std::byte> Next(std::uint64_t maximum = UINT64_MAX);
    // The same into the caller's memory: fills the span, less only at the end of the file, and
    // returns how many bytes it has read.
    [[nodiscard]] std::size_t Read(std::span<std::byte> destination);

    // Throws Error 75 when the file was written since it was opened: what was read may be neither
    // the old contents nor the new ones.
    void RequireUnchanged() const;

 private:
    const FileToRead& m_file;
    const ReadServices& m_services;
    std::uint64_t m_fileBytes;
    ports::FileTime m_fileDate;
    std::unique_ptr<ports::SequentialFile> m_content;
    PageMemory m_block;
    std::uint64_t m_bytesRead = 0;
};

// Error 75, for a file that was written to while it was being read.
[[nodiscard]] Error FileChangedError();

}  // namespace krv::waveform
