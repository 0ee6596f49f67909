// The port that puts forms on a screen: a window system, a terminal, or a test's script.
//
// The screen is the only one who may deliver user input: the forms' input operations take a
// UserInput, which only a class derived from FormScreen can make.
#pragma once

#include <cstdint>

namespace krv::forms {
class Form;
class Control;
enum class PropertyId : std::uint8_t;
}  // namespace krv::forms

namespace krv::ports {

// A native window handle that is only handed through; 0 means none.
using WindowHandle = std::intptr_t;

class UserInput {
    friend class FormScreen;
    UserInput() = default;
};

class FormScreen {
 public:
    virtual ~FormScreen() = default;

    // Fills the form's placeholders for foreign controls. Throws Error when the form or one of them
    // can't be put up, and keeps nothing of the form.
    virtual void FormLoaded(forms::Form& form) = 0;
    virtual void FormUnloaded(forms::Form& form) = 0;

    // Puts a form, already marked visible, on the screen and returns. Activation follows as the
    // platform delivers it, at the latest with the next pending events.
    virtual void ShowModeless(forms::Form& form, WindowHandle owner) = 0;
    // The same, and activates the form, then delivers input until the form is no longer visible.
    virtual void RunModal(forms::Form& form, WindowHandle owner) = 0;
    virtual void HideForm(forms::Form& form) = 0;

    // Draws at once what is out of date.
    virtual void Repaint(forms::Form& form) = 0;
    virtual void Repaint(forms::Control& control) = 0;

    // A property of a loaded form or of one of its controls has really changed. A timer's Interval
    // and Enabled are reported on every write, since each write restarts it.
    virtual void FormChanged(forms::Form& form, forms::PropertyId property) = 0;
    virtual void ControlChanged(forms::Control& control, forms::PropertyId property) = 0;

 protected:
    [[nodiscard]] static UserInput Input() noexcept { return {}; }
};

}  // namespace krv::ports
