#include "bench/document/Document.h"

#include <array>
#include <utility>

namespace krv::bench {
namespace {

constexpr std::array<std::int32_t, 4> Cursors{2, 0, 1, 3};
// What a page may hold.
constexpr double LongestPoints = 22 * 72;

// The number that callers know.
constexpr std::int32_t OutOfRangeNumber = 4608;

Error OutOfRange() {
    return Error(OutOfRangeNumber, "Value out of range.");
}

}  // namespace

const OfficeTraits& DocumentTraits() {
    static constexpr OfficeTraits Traits{.program = "krvdoc",
                                         .officeName = L"Word",
                                         .newDocument = "Document",
                                         .kindOfFile = "document",
                                         .fileEnding = ".krvdoc",
                                         .contentSection = "text",
                                         .hasSheets = false,
                                         .hasOneDocument = true,
                                         .pictureLimits = {LongestPoints, LongestPoints},
                                         .cursors = Cursors,
                                         .waitCursor = 0,
                                         .pictureOutOfPlace = &OutOfRange,
                                         .noSuchCursor = &OutOfRange,
                                         .fileError = [](const Error& cause) { return cause; }};
    return Traits;
}

Document::Document(std::string name, Listener listener)
    : OfficeDocument(DocumentTraits(), std::move(name), std::move(listener)) {}

void Document::SetText(const std::string& text) {
    if (m_text != text) {
        m_text = text;
        Modify(OfficeChange::Content);
    }
}

}  // namespace krv::bench
