// WindowsScreen: puts forms on a Windows display, one generic window a form, and lets pending
// window messages through. The user-interface thread's; it outlives every form.
#pragma once

#include <windows.h>

#include <map>
#include <memory>

#include "ports/desktop/EventPump.h"
#include "ports/desktop/FormScreen.h"
#include "windows/forms/ForeignControlContainer.h"
#include "windows/forms/FormWindow.h"

namespace krv::windows {

class WindowsScreen final : public ports::FormScreen, public ports::EventPump, private FormInput {
 public:
    // Without a container for foreign controls, their placeholders stay empty.
    explicit WindowsScreen(ForeignControlContainer* foreignControls = nullptr);
    ~WindowsScreen() override;

    void FormLoaded(forms::Form& form) override;
    void FormUnloaded(forms::Form& form) override;
    void ShowModeless(forms::Form& form, ports::WindowHandle owner) override;
    void RunModal(forms::Form& form, ports::WindowHandle owner) override;
    void HideForm(forms::Form& form) override;
    void Repaint(forms::Form& form) override;
    void Repaint(forms::Control& control) override;
    void FormChanged(forms::Form& form, forms::PropertyId property) override;
    void ControlChanged(forms::Control& control, forms::PropertyId property) override;

    void ProcessPendingEvents() override;
    void ProcessEventsInLoop() override;

    // The window of a form; null while the form isn't loaded.
    [[nodiscard]] HWND WindowOf(const forms::Form& form) const;
    // The front visible form's window, which message boxes and file dialogs belong to; without one
    // the thread's active window.
    [[nodiscard]] HWND ActiveWindow() const;

 private:
    void Activated(forms::Form& form) override;
    void Closed(forms::Form& form) override;
    bool KeyPressed(forms::Form& form, int keyCode, bool shift, bool control, bool alt) override;
    void Notified(ControlWindow& window, UINT notification) override;
    void Waited(forms::Timer& timer) override;

    static LRESULT CALLBACK HookProcedure(int code, WPARAM wide, LPARAM low);
    void FillPlaceholders(FormWindow& window);
    void UpdateHook();
    bool FormTakes(MSG& message);
    [[nodiscard]] HWND FrontWindow(const forms::Form* except) const;
    [[nodiscard]] FormWindow& Window(const forms::Form& form);
    [[nodiscard]] FormWindow& LivingWindow(forms::Form& form);

    ForeignControlContainer* m_foreignControls;
    std::map<const forms::Form*, std::unique_ptr<FormWindow>> m_windows;
    HHOOK m_hook = nullptr;
    // When a loop last let events through.
    ULONGLONG m_loopTick = 0;
};

}  // namespace krv::windows
