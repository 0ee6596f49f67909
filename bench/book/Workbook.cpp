#include "bench/book/Workbook.h"

#include <array>
#include <utility>

#include "bench/book/BookErrors.h"
#include "bench/book/CsvText.h"
#include "bench/book/RangeText.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr std::array<std::int32_t, 4> Cursors{-4143, 1, 2, 3};

}  // namespace

const OfficeTraits& BookTraits() {
    static constexpr OfficeTraits Traits{
        .program = "krvbook",
        .officeName = L"Excel",
        .newDocument = "Book",
        .kindOfFile = "workbook",
        .fileEnding = ".krvbook",
        .contentSection = "cells",
        .hasSheets = true,
        .hasOneDocument = false,
        // Anywhere on a sheet.
        .pictureLimits = {22 * 72, 1e8},
        .cursors = Cursors,
        .waitCursor = 2,
        .pictureOutOfPlace =
            [] { return ApplicationError("A picture can't have this size or place."); },
        .noSuchCursor =
            [] {
                return ApplicationError(
                    "Unable to set the Cursor property of the Application class");
            },
        .fileError = [](const Error& cause) { return ApplicationError(cause.Description()); }};
    return Traits;
}

Workbook::Workbook(std::string name, Listener listener)
    : OfficeDocument(BookTraits(), std::move(name), std::move(listener)) {}

std::string Workbook::SheetName() const {
    return Name().substr(0, Name().rfind('.'));
}

std::string Workbook::Content() const {
    return WriteCsv(m_sheet);
}

void Workbook::TakeContent(std::string_view content) {
    m_sheet = ReadCsv(content);
}

void Workbook::SetCell(CellPosition cell, const Value& value) {
    ChangeCells([&](Sheet& sheet) { sheet.Set(cell, value); });
}

void Workbook::ChangeCells(const std::function<void(Sheet&)>& work) {
    work(m_sheet);
    Modify(OfficeChange::Content);
}

void Workbook::ChangeSelection(const std::function<void(Selection&)>& work) {
    work(m_selection);
    Notify(OfficeChange::Selection);
}

std::vector<CellArea> Workbook::ResolveRange(const std::string& text) const {
    std::optional<RangeReference> reference = ParseRangeText(text);
    if (!reference ||
        (!reference->sheetName.empty() && !EqualIgnoringCase(reference->sheetName, SheetName()))) {
        throw ApplicationError("\"" + text + "\" is no range of cells.");
    }
    return std::move(reference->areas);
}

}  // namespace krv::bench
