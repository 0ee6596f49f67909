// What tells one of the bench's applications from the other: its names, its files, its cursors, and
// the errors that its callers know.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "bench/shared/DocumentPicture.h"
#include "common/Error.h"

namespace krv::bench {

namespace OfficeErrorNumber {
inline constexpr std::int32_t ObjectRequired = 424;
}  // namespace OfficeErrorNumber

struct OfficeTraits {
    // The program's name, which is also the source of its errors.
    const char* program;
    // The application whose add-ins it loads.
    const wchar_t* officeName;
    // New documents are called by it and a number.
    const char* newDocument;
    // "workbook"; what a file says that it holds.
    const char* kindOfFile;
    // With its dot.
    const char* fileEnding;
    // The name of the file's section that holds the cells or the text.
    const char* contentSection;
    // Documents are sheets of cells, not pages of text: a file of another ending holds cells alone.
    bool hasSheets;
    // A document that is opened takes the place of the one that was open.
    bool hasOneDocument;
    PictureLimits pictureLimits;
    // The first is the usual one.
    std::span<const std::int32_t> cursors;
    std::int32_t waitCursor;

    Error (*pictureOutOfPlace)();
    Error (*noSuchCursor)();
    // What callers see of an error with a file.
    Error (*fileError)(const Error& cause);
};

}  // namespace krv::bench
