// Workbook: one document of the workbook application: its one sheet and what is selected on it.
// Files of its own format are *.krvbook, any other is comma separated values.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/book/Selection.h"
#include "bench/book/Sheet.h"
#include "bench/shared/OfficeDocument.h"

namespace krv::bench {

class Workbook final : public OfficeDocument {
 public:
    Workbook(std::string name, Listener listener);

    // The name without the file's ending.
    [[nodiscard]] std::string SheetName() const;

    [[nodiscard]] const Sheet& Cells() const { return m_sheet; }
    void SetCell(CellPosition cell, const Value& value);
    // Any work on the cells, which is one change.
    void ChangeCells(const std::function<void(Sheet&)>& work);

    [[nodiscard]] const Selection& Selected() const { return m_selection; }
    void ChangeSelection(const std::function<void(Selection&)>& work);

    // The areas of a range text on this book's sheet. Throws Error 1004 when it is none.
    [[nodiscard]] std::vector<CellArea> ResolveRange(const std::string& text) const;

 private:
    [[nodiscard]] std::string Content() const override;
    void TakeContent(std::string_view content) override;

    Sheet m_sheet;
    Selection m_selection;
};

// The traits of the workbook application.
[[nodiscard]] const OfficeTraits& BookTraits();

}  // namespace krv::bench
