#include "image/ExcelPictureTarget.h"

#include "common/ScopeExit.h"

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

void ExcelPictureTarget::SetBusyCursor(bool isBusy) {
    m_excel->SetBusyCursor(isBusy);
}

void ExcelPictureTarget::Place(const std::string& file) {
    const auto cell = m_excel->ActiveCell();
    const auto sheet = m_excel->ActiveSheet();
    const ports::PixelsPerInch pixels = m_resolution.Of(m_context);
    const double width = m_excel->InchesToPoints(ImageWidth / pixels.horizontal);
    const double height = m_excel->InchesToPoints(ImageHeight / pixels.vertical);
    const bool wasUpdating = m_excel->IsScreenUpdating();
    m_excel->SetScreenUpdating(false);
    const ScopeExit restored([&] { m_excel->SetScreenUpdating(wasUpdating); });
    AddAtOriginalSize(*sheet, {file, false, true, cell->Left(), cell->Top(), width, height});
}

}  // namespace krv::image
