#include "windows/office/AutomationWorksheet.h"

#include <utility>

#include "common/Error.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

// Office's own truth values.
_variant_t ThreeState(bool value) {
    return ToVariant(std::int32_t{value ? -1 : 0});
}

class AutomationCell final : public ports::Cell {
 public:
    explicit AutomationCell(LateBound cell) : m_cell(std::move(cell)) {}
    double Left() override { return DoubleOf(m_cell.Get(L"Left")); }
    double Top() override { return DoubleOf(m_cell.Get(L"Top")); }

 private:
    LateBound m_cell;
};

class AutomationShape final : public ports::Shape {
 public:
    explicit AutomationShape(LateBound shape) : m_shape(std::move(shape)) {}
    void ScaleHeight(double factor, bool relativeToOriginalSize) override {
        m_shape.Call(L"ScaleHeight", {ToVariant(factor), ThreeState(relativeToOriginalSize)});
    }
    void ScaleWidth(double factor, bool relativeToOriginalSize) override {
        m_shape.Call(L"ScaleWidth", {ToVariant(factor), ThreeState(relativeToOriginalSize)});
    }

 private:
    LateBound m_shape;
};

class AutomationWorksheet final : public ports::Worksheet {
 public:
    explicit AutomationWorksheet(LateBound sheet) : m_sheet(std::move(sheet)) {}
    std::shared_ptr<ports::Shape> AddPicture(const ports::PictureToAdd& picture) override {
        LateBound shape = m_sheet.GetObject(L"Shapes").CallObject(
            L"AddPicture",
            {ToVariant(picture.file), ThreeState(picture.linkToFile),
             ThreeState(picture.saveWithDocument), ToVariant(picture.left), ToVariant(picture.top),
             ToVariant(picture.width), ToVariant(picture.height)});
        if (!shape) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        return std::make_shared<AutomationShape>(std::move(shape));
    }

 private:
    LateBound m_sheet;
};

}  // namespace

std::shared_ptr<ports::Cell> CellOf(LateBound cell) {
    if (!cell) {
        throw Error(ErrorNumber::ObjectNotSet,
                    "There is no active cell, as on a chart sheet.  Activate a worksheet, select "
                    "the cell that the picture is to be placed at, and try again.");
    }
    return std::make_shared<AutomationCell>(std::move(cell));
}

std::shared_ptr<ports::Worksheet> WorksheetOf(LateBound sheet) {
    if (!sheet) {
        throw Error(ErrorNumber::ObjectNotSet,
                    "No sheet is active.  Open a workbook, activate a worksheet, and try again.");
    }
    return std::make_shared<AutomationWorksheet>(std::move(sheet));
}

}  // namespace krv::windows
