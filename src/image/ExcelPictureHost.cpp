#include "image/ExcelPictureHost.h"

#include "common/ErrorTrap.h"

namespace krv::image {
namespace {

// The instrument's screen image, in pixels.
constexpr double ImageWidth = 640;
constexpr double ImageHeight = 320;

void AddAtOriginalSize(ports::Worksheet& sheet, const ports::PictureToAdd& picture) {
    const auto shape = sheet.AddPicture(picture);
    shape->ScaleHeight(1.0, true);
    shape->ScaleWidth(1.0, true);
}

}  // namespace

void ExcelPictureHost::SetBusyCursor(bool isBusy) {
    m_excel.SetBusyCursor(isBusy);
}

void ExcelPictureHost::Place(const std::string& file) {
    const auto cell = m_excel.ActiveCell();
    const auto sheet = m_excel.ActiveSheet();
    const ports::PixelsPerInch pixels = m_resolution.Of(m_context);
    const double width = m_excel.InchesToPoints(ImageWidth / pixels.horizontal);
    const double height = m_excel.InchesToPoints(ImageHeight / pixels.vertical);
    const bool wasUpdating = m_excel.IsScreenUpdating();
    m_excel.SetScreenUpdating(false);
    const auto failure = FailureOf([&] {
        AddAtOriginalSize(*sheet, {file, false, true, cell->Left(), cell->Top(), width, height});
    });
    m_excel.SetScreenUpdating(wasUpdating);
    if (failure) {
        throw Error(*failure);
    }
}

}  // namespace krv::image
