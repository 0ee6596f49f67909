#include "windows/forms/WindowsScreen.h"

#include <commctrl.h>

#include <exception>
#include <utility>

#include "windows/base/DisabledWindows.h"
#include "windows/base/ProcedureGuard.h"

namespace krv::windows {
namespace {

// The screen whose modeless forms the message hook of this thread serves.
thread_local WindowsScreen* hookedScreen = nullptr;

HWND ToWindow(ports::WindowHandle handle) {
    return reinterpret_cast<HWND>(handle);
}

// The foreign controls themselves go with their windows.
void EmptyPlaceholders(forms::Form& form, ports::UserInput input) {
    for (forms::Control* control : form.Controls()) {
        if (control->Kind() == forms::ControlKind::ForeignControl) {
            static_cast<forms::ForeignControl&>(*control).SetObject(input, nullptr);
        }
    }
}

}  // namespace

WindowsScreen::WindowsScreen(ForeignControlContainer* foreignControls)
    : m_foreignControls(foreignControls) {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS |
                                                     ICC_BAR_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
}

WindowsScreen::~WindowsScreen() {
    m_windows.clear();
    UpdateHook();
}

void WindowsScreen::FormLoaded(forms::Form& form) {
    auto window = std::make_unique<FormWindow>(form, static_cast<FormInput&>(*this));
    try {
        FillPlaceholders(*window);
    } catch (...) {
        EmptyPlaceholders(form, Input());
        throw;
    }
    m_windows[&form] = std::move(window);
}

void WindowsScreen::FillPlaceholders(FormWindow& window) {
    if (m_foreignControls == nullptr) {
        return;
    }
    for (forms::Control* control : window.Model().Controls()) {
        if (control->Kind() == forms::ControlKind::ForeignControl) {
            auto& placeholder = static_cast<forms::ForeignControl&>(*control);
            placeholder.SetObject(
                Input(), m_foreignControls->CreateIn(window.WindowOf(placeholder), placeholder));
        }
    }
}

void WindowsScreen::FormUnloaded(forms::Form& form) {
    EmptyPlaceholders(form, Input());
    DisabledWindows::WindowGoes(WindowOf(form));
    m_windows.erase(&form);
    UpdateHook();
}

void WindowsScreen::ShowModeless(forms::Form& form, ports::WindowHandle owner) {
    FormWindow& window = LivingWindow(form);
    DisabledWindows::WindowComes(window.Handle());
    window.Show(ToWindow(owner));
    UpdateHook();
}

void WindowsScreen::RunModal(forms::Form& form, ports::WindowHandle owner) {
    FormWindow& window = LivingWindow(form);
    const HWND ownerWindow = owner != 0 ? ToWindow(owner) : FrontWindow(&form);
    DisabledWindows disabled(window.Handle());
    // It may have come up before, below another modal window.
    EnableWindow(window.Handle(), TRUE);
    window.Show(ownerWindow);
    form.UserActivates(Input());
    MSG message{};
    while (form.IsVisible()) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got <= 0) {
            // The application is ending: the quit message is meant for its own loop.
            PostQuitMessage(static_cast<int>(message.wParam));
            form.Hide();
            break;
        }
        if (!FormTakes(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    disabled.Release();
    // What ended the loop may have unloaded the form, and its window with it.
    if (const auto found = m_windows.find(&form); found != m_windows.end()) {
        found->second->Hide();
    }
    if (ownerWindow != nullptr) {
        SetForegroundWindow(ownerWindow);
    }
}

void WindowsScreen::HideForm(forms::Form& form) {
    // A modal form's window goes when its loop has enabled the others again.
    if (!form.IsModal()) {
        Window(form).Hide();
    } else {
        // The loop waits for messages that are posted; what hides the form may be one that is sent.
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    }
    UpdateHook();
}

void WindowsScreen::Repaint(forms::Form& form) {
    Window(form).Repaint();
}

void WindowsScreen::Repaint(forms::Control& control) {
    Window(control.Owner()).Repaint(control);
}

void WindowsScreen::FormChanged(forms::Form& form, forms::PropertyId property) {
    Window(form).Update(property);
}

void WindowsScreen::ControlChanged(forms::Control& control, forms::PropertyId property) {
    Window(control.Owner()).Update(control, property);
}

void WindowsScreen::ProcessPendingEvents() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (!FormTakes(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

// Looking into the message queue takes as long as converting some hundred values; reading the tick
// count takes as long as converting two.
void WindowsScreen::ProcessEventsInLoop() {
    const ULONGLONG tick = GetTickCount64();
    if (tick != m_loopTick) {
        m_loopTick = tick;
        ProcessPendingEvents();
    }
}

HWND WindowsScreen::WindowOf(const forms::Form& form) const {
    const auto found = m_windows.find(&form);
    return found == m_windows.end() ? nullptr : found->second->Handle();
}

HWND WindowsScreen::ActiveWindow() const {
    return FrontWindow(nullptr);
}

HWND WindowsScreen::FrontWindow(const forms::Form* except) const {
    const HWND active = GetActiveWindow();
    HWND front = nullptr;
    for (const auto& [form, window] : m_windows) {
        if (form == except || !form->IsVisible() || IsWindowEnabled(window->Handle()) == 0) {
            continue;
        }
        if (window->Handle() == active) {
            return active;
        }
        front = window->Handle();
    }
    return front != nullptr ? front : active;
}

// Each of these may end the form and its window, when nothing but `owner` keeps them: it is
// released last.
void WindowsScreen::Activated(forms::Form& form) {
    const auto owner = form.KeptOwner();
    form.UserActivates(Input());
}

void WindowsScreen::Closed(forms::Form& form) {
    const auto owner = form.KeptOwner();
    form.UserCloses(Input());
}

bool WindowsScreen::KeyPressed(forms::Form& form, int keyCode, bool shift, bool control, bool alt) {
    const auto owner = form.KeptOwner();
    return form.UserPressesKey(Input(), keyCode, shift, control, alt);
}

void WindowsScreen::Notified(ControlWindow& window, UINT notification) {
    const auto owner = window.Model().Owner().KeptOwner();
    window.Deliver(Input(), notification);
}

void WindowsScreen::Waited(forms::Timer& timer) {
    const auto owner = timer.Owner().KeptOwner();
    timer.UserWaited(Input());
}

// A modeless form lives in the application's message loop, which knows nothing of its keyboard
// navigation: a hook takes the form's messages as the application fetches them.
LRESULT CALLBACK WindowsScreen::HookProcedure(int code, WPARAM wide, LPARAM low) {
    auto* const message = reinterpret_cast<MSG*>(low);
    if (code == HC_ACTION && wide == PM_REMOVE && hookedScreen != nullptr &&
        message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST &&
        GuardProcedure([&] { return LRESULT{hookedScreen->FormTakes(*message)}; }) != 0) {
        message->message = WM_NULL;
        message->wParam = 0;
        message->lParam = 0;
    }
    return CallNextHookEx(nullptr, code, wide, low);
}

void WindowsScreen::UpdateHook() {
    bool needed = false;
    for (const auto& [form, window] : m_windows) {
        needed = needed || (form->IsVisible() && !form->IsModal());
    }
    if (needed && m_hook == nullptr) {
        hookedScreen = this;
        m_hook = SetWindowsHookExW(WH_GETMESSAGE, HookProcedure, nullptr, GetCurrentThreadId());
    } else if (!needed && m_hook != nullptr) {
        UnhookWindowsHookEx(std::exchange(m_hook, nullptr));
        hookedScreen = nullptr;
    }
}

bool WindowsScreen::FormTakes(MSG& message) {
    for (const auto& [form, window] : m_windows) {
        if (form->IsVisible() && window->TakesMessage(message)) {
            return true;
        }
    }
    return false;
}

FormWindow& WindowsScreen::Window(const forms::Form& form) {
    return *m_windows.at(&form);
}

// The system destroys a window with the one that it belonged to; the form gets another.
FormWindow& WindowsScreen::LivingWindow(forms::Form& form) {
    if (Window(form).Handle() == nullptr) {
        EmptyPlaceholders(form, Input());
        FormLoaded(form);
    }
    return Window(form);
}

}  // namespace krv::windows
