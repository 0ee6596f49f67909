// The formats that files of samples come in, and the way from a file to its recording.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "formats/ByteStreams.h"
#include "formats/Recording.h"
#include "formats/SampleType.h"

namespace krv::formats {

struct OpenOptions {
    // What the file holds without a header; nothing where its content tells.
    std::optional<SampleLayout> raw;
    // The columns that the user has named stand side by side, whatever they look like.
    bool columnsAreNamed = false;
};

// A file at which the formats take a look.
struct Opening {
    InputFile file;
    // Its first bytes, at most BeginningBytes.
    std::vector<std::byte> beginning;
    std::uint64_t size = 0;
    OpenOptions options;
};
inline constexpr std::size_t BeginningBytes = 4096;

struct Format {
    const char* name;
    // What of it is read.
    const char* reads;
    // What this build lacks to read it; null where it lacks nothing.
    const char* lacks;
    // Null for a format that is told and not found.
    bool (*recognises)(const Opening& opening);
    // Throws Error 321 with the place and the reason where the file isn't what it should be.
    std::unique_ptr<Recording> (*open)(const Opening& opening);
};

// In the order in which they look at a file; text comes last.
[[nodiscard]] std::span<const Format> AllFormats() noexcept;

// The format whose content, or, for files without a mark, whose name the file has; null for none.
// Throws the file system's errors.
[[nodiscard]] const Format* RecogniseFormat(const InputFile& file);

// Throws also where the file has no known format, or one that this build can't read.
[[nodiscard]] std::unique_ptr<Recording> OpenRecording(const InputFile& file,
                                                       const OpenOptions& options);

}  // namespace krv::formats
