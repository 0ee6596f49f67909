#include "windows/addin/Ribbon.h"

#include <olectl.h>

#include <algorithm>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/Query.h"
#include "windows/base/DotsPerInch.h"
#include "windows/pictures/ToolbarPictures.h"

namespace krv::windows {
namespace {

constexpr int LargePicture = 32;
constexpr std::size_t ConnectedCommand = 2;

}  // namespace

void Ribbon::Load(IDispatch* ribbon) {
    m_ribbon = Query<IRibbonUI>(ribbon);
}

void Ribbon::Invalidate() const {
    // The host may load another one meanwhile.
    if (const auto ribbon = m_ribbon) {
        ribbon->Invalidate();
    }
}

std::size_t CommandOf(IDispatch* control) {
    const std::string id = LateBound(control).GetText(L"Id");
    const auto found = std::ranges::find_if(
        Commands, [&](const Command& command) { return id == command.ribbonId; });
    if (found == Commands.end()) {
        throw Error(ErrorNumber::InvalidCall);
    }
    return static_cast<std::size_t>(found - Commands.begin());
}

// The adapter's tool tips say why a command doesn't go with the connected instrument.
std::string SupertipOf(const ButtonStates& states, std::size_t command) {
    const ButtonState& state = states[command];
    if (state.isEnabled || states[ConnectedCommand].isVisible) {
        return state.toolTip;
    }
    return state.toolTip + ".  Connect to a signal generator first.";
}

IDispatch* NewCommandPicture(std::size_t command, HWND window) {
    const int side = MulDiv(LargePicture, static_cast<int>(DotsPerInch(window)), UsualDotsPerInch);
    Bitmap bitmap = NewToolbarPicture(Commands[command].caption, side, true);
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = bitmap.get();
    IDispatch* picture = nullptr;
    ThrowIfFailed(OleCreatePictureIndirect(&description, IID_IDispatch, TRUE,
                                           reinterpret_cast<void**>(&picture)));
    // The picture's from now on.
    bitmap.release();
    return picture;
}

}  // namespace krv::windows
