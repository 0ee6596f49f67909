#include "windows/desktop/WindowsScreenResolution.h"

#include <windows.h>

#include "windows/base/DeviceContext.h"

namespace krv::windows {
namespace {

ports::PixelsPerInch ResolutionOf(HDC context) {
    return {GetDeviceCaps(context, LOGPIXELSX), GetDeviceCaps(context, LOGPIXELSY)};
}

}  // namespace

ports::PixelsPerInch WindowsScreenResolution::Of(ports::DeviceContext context) {
    const ports::PixelsPerInch given = ResolutionOf(reinterpret_cast<HDC>(context));
    if (given.horizontal > 0 && given.vertical > 0) {
        return given;
    }
    return ResolutionOf(WindowContext(nullptr).Get());
}

}  // namespace krv::windows
