#include "windows/base/DialogFont.h"

namespace krv::windows {
namespace {

constexpr int Points = 8;
constexpr int PointsPerInch = 72;

}  // namespace

Font NewDialogFont(int dotsPerInch) {
    LOGFONTW font{};
    font.lfHeight = -MulDiv(Points, dotsPerInch, PointsPerInch);
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfQuality = CLEARTYPE_QUALITY;
    lstrcpynW(font.lfFaceName, L"MS Shell Dlg 2", LF_FACESIZE);
    return Font(CreateFontIndirectW(&font));
}

}  // namespace krv::windows
