// Form: a dialog as state and behaviour, without a window. A FormScreen puts it on a screen.
//
// A form is created, loaded once, shown modal or modeless, activated, hidden (which ends a modal
// show) and unloaded. Its state is one thread's: the host's user-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/forms/Control.h"
#include "ports/desktop/FormScreen.h"

namespace krv::forms {

namespace KeyCode {
inline constexpr int F1 = 112;
}

class Form : public PropertyOwner {
 public:
    Form(std::string name, ports::FormScreen& screen);
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form();

    [[nodiscard]] const std::string& Name() const noexcept { return m_name; }
    [[nodiscard]] bool IsLoaded() const noexcept { return m_loaded; }
    [[nodiscard]] bool IsVisible() const noexcept { return m_visible; }
    [[nodiscard]] bool IsModal() const noexcept { return m_modal; }

    Property<std::string> Caption;
    // The size of the client area; left and top are not used, a form opens centred.
    Property<krv::forms::Place> Place;

    // Raises OnLoad, once until the form is unloaded. When that throws, the form isn't loaded.
    void Load();
    // Loads the form when it is not, and shows it. Shown modeless it returns at once; a form that
    // is shown modal stays so.
    void ShowModeless(ports::WindowHandle owner = 0);
    // Returns when the form has been hidden. Throws Error 400 when it is already visible. An error
    // that ends the screen's modal loop hides the form and goes on to the caller.
    void ShowModal(ports::WindowHandle owner = 0);
    // Hiding ends a modal show; a hidden form keeps its state.
    void Hide();
    // Hides the form, takes it off the screen and raises OnUnload; the next show loads again.
    void Unload();
    void Refresh();

    // All controls, in the order of creation, which is the tab order. Empty by the time the screen
    // hears that a form was destroyed while it was loaded.
    [[nodiscard]] const std::vector<Control*>& Controls() const noexcept { return m_controls; }

    // The whole state, one control a line, the form first.
    [[nodiscard]] std::string StateText() const;

    // Returns an object that keeps the form's owner, and so the form, alive: a handler of the
    // user's input may let through messages upon which all others release them. Empty for a form
    // that can't be released meanwhile.
    std::function<std::shared_ptr<void>()> KeepOwner;
    // What the screen holds while it delivers input; null without KeepOwner.
    [[nodiscard]] std::shared_ptr<void> KeptOwner() const {
        return KeepOwner ? KeepOwner() : nullptr;
    }

    // User input, from the screen alone.
    void UserActivates(ports::UserInput input);
    // The user asks to close the window (its close box, Alt+F4).
    void UserCloses(ports::UserInput input);
    // Returns true when the form has used the key up.
    bool UserPressesKey(ports::UserInput input, int keyCode, bool shift, bool control, bool alt);

    void PropertyChanged(PropertyId property) override;

 protected:
    virtual void OnLoad() {}
    virtual void OnActivate() {}
    virtual void OnUnload() {}
    // The close box: hides the form unless a form decides otherwise.
    virtual void OnQueryClose() { Hide(); }
    // A key pressed on the form or any of its controls; true swallows it.
    virtual bool OnKeyDown(int /*keyCode*/, bool /*shift*/, bool /*control*/, bool /*alt*/) {
        return false;
    }

 private:
    friend class Control;
    void AddControl(Control& control) { m_controls.push_back(&control); }
    void RemoveControl(const Control& control);
    void TellScreen(Control& control, PropertyId property);
    void RefreshControl(Control& control);

    const std::string m_name;
    ports::FormScreen& m_screen;
    std::vector<Control*> m_controls;
    bool m_loaded = false;
    bool m_visible = false;
    bool m_modal = false;
};

}  // namespace krv::forms
