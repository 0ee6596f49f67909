// FormWindow: the top-level window of one form, with a child window for each control. Generic: it
// knows the form package and no dialog. Owned by the WindowsScreen; the user-interface thread's.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "common/forms/Form.h"
#include "windows/base/Handles.h"
#include "windows/base/WindowClass.h"
#include "windows/forms/ControlWindow.h"
#include "windows/forms/FormToolTips.h"
#include "windows/forms/Palette.h"

namespace krv::windows {

// What the window hands the user's actions to; each call is the user's input to the form.
class FormInput {
 public:
    virtual ~FormInput() = default;
    virtual void Activated(forms::Form& form) = 0;
    virtual void Closed(forms::Form& form) = 0;
    virtual bool KeyPressed(forms::Form& form, int keyCode, bool shift, bool control, bool alt) = 0;
    virtual void Notified(ControlWindow& window, UINT notification) = 0;
    virtual void Waited(forms::Timer& timer) = 0;
};

class FormWindow final : public WindowClass<FormWindow> {
 public:
    // Throws Error when the system refuses the window.
    FormWindow(forms::Form& form, FormInput& input);

    [[nodiscard]] forms::Form& Model() const { return m_form; }
    // The window of a control; null for one that has nothing to show.
    [[nodiscard]] HWND WindowOf(const forms::Control& control);

    // Shows the window centred over its owner (or on the screen), with the focus on its first
    // control.
    void Show(HWND owner);
    void Hide();
    void Update(forms::PropertyId property);
    void Update(forms::Control& control, forms::PropertyId property);
    void Repaint();
    void Repaint(forms::Control& control);

    // Takes a message that the window's keyboard navigation or a form's key handler uses up.
    bool TakesMessage(MSG& message);

 private:
    friend WindowClass<FormWindow>;

    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    bool ForeignControlTakes(MSG& message);
    void CreateControls();
    void GroupOptionButtons();
    void Relayout();
    void Center(HWND owner);
    void FocusAChild();
    void RestartTimer(forms::Timer& timer);
    void Fire(UINT_PTR id);
    void Command(int id, UINT notification);
    void PressButton(bool cancel);
    [[nodiscard]] LRESULT ColorOf(HDC context, HWND child);
    void Draw(const DRAWITEMSTRUCT& item);
    [[nodiscard]] SIZE OuterSize() const;
    [[nodiscard]] ControlWindow* Find(const forms::Control& control);
    [[nodiscard]] ControlWindow* Find(HWND child);
    [[nodiscard]] LRESULT DefaultButton() const;

    forms::Form& m_form;
    FormInput& m_input;
    FormToolTips m_toolTips;
    // The child that had the focus when the window was last left.
    HWND m_lastFocus = nullptr;
    Font m_font;
    Palette m_palette;
    std::vector<std::unique_ptr<ControlWindow>> m_controls;
};

}  // namespace krv::windows
