// Puts the controls of other makers into the placeholders of forms. The user-interface thread's; it
// outlives the screen that asks it.
#pragma once

#include <windows.h>

#include <memory>

#include "common/forms/ForeignControl.h"

namespace krv::windows {

// What a hosted object may be besides its port: one that has a use for keys of its own.
class KeyTaker {
 public:
    virtual ~KeyTaker() = default;
    // While the keyboard is in its window. False leaves the key to the form's own navigation.
    virtual bool TakesKey(MSG& message) = 0;
};

class ForeignControlContainer {
 public:
    virtual ~ForeignControlContainer() = default;
    // Creates the control that the placeholder names inside the window, which has the placeholder's
    // size and takes the control with it when it goes. Throws Error, 429 with a description that
    // says what to do when the control isn't installed.
    virtual std::shared_ptr<ports::ForeignObject> CreateIn(
        HWND window, const forms::ForeignControl& placeholder) = 0;
};

}  // namespace krv::windows
