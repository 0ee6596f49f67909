// What the fuzz targets of the readers of samples share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "formats/Import.h"
#include "formats/Readers.h"
#include "fuzz/FuzzTarget.h"
#include "tests/support/MemoryFiles.h"

namespace krv::fuzz {

using OpenReader = std::unique_ptr<formats::Recording> (*)(const formats::Opening&);

// Reads a file through a reader, from beginning to end: no more frames than the description
// promises, and exactly as many where it counts them. An error must say what is wrong with the
// file, or with the one that belongs to it. Then the same with all that an import does.
inline void ReadRecording(const formats::InputFile& file, OpenReader open) {
    const formats::Opening opening{file,
                                   formats::ReadPiece(file, 0, formats::BeginningBytes),
                                   file.files.FileSize(file.name),
                                   {}};
    try {
        const auto recording = open(opening);
        const formats::About& about = recording->Description();
        Require(!about.columns.empty(), "a recording has columns");
        // Blocks that no frame count is a multiple of.
        std::vector<double> values(7 * about.columns.size());
        std::uint64_t frames = 0;
        for (std::size_t got = 7; got == 7; frames += got) {
            got = recording->Read(values);
        }
        Require(frames <= about.mostFrames, "no more frames than promised");
        Require(!about.frames || frames == *about.frames, "as many frames as told");
        static_cast<void>(formats::Import(file, {}, [] {}));
    } catch (const Error& error) {
        Require(error.Number() == ErrorNumber::InvalidFileFormat, "the error is about the file");
        const std::string stem = file.name.substr(0, file.name.rfind('.'));
        Require(error.Description().starts_with(stem), "the error names the file");
    }
}

// The same with one file of the name in memory.
inline void ReadRecording(const std::string& name, std::string content, OpenReader open) {
    tests::MemoryFiles files;
    files.Put(name, std::move(content));
    ReadRecording(formats::InputFile{files, name}, open);
}

}  // namespace krv::fuzz
