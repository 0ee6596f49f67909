// Puts the controls of other makers into the placeholders of forms. The user-interface thread's; it
// outlives the screen that asks it.
#pragma once

#include <windows.h>

#include <memory>

#include "common/forms/ForeignControl.h"

namespace krv::windows {

class ForeignControlHost {
 public:
    virtual ~ForeignControlHost() = default;
    // Creates the control that the placeholder names inside the window, which has the placeholder's
    // size and takes the control with it when it goes. Throws Error, 429 with a description that
    // says what to do when the control isn't installed.
    virtual std::shared_ptr<desktop::HostedObject> CreateIn(
        HWND window, const forms::ForeignControl& placeholder) = 0;
};

}  // namespace krv::windows
