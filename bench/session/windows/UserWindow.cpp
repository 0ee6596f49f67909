#include "bench/session/windows/UserWindow.h"

#include <algorithm>
#include <array>

#include "bench/session/windows/UserDesktop.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowName.h"

namespace krv::bench {
namespace {

using windows::ToUtf8;
using windows::ToWide;

// A program that doesn't answer for so long hangs.
constexpr UINT AnswerMs = 10000;
constexpr int MessageTextId = 0xFFFF;
constexpr const char* MessageBoxClass = "#32770";

LRESULT Ask(HWND window, UINT message, WPARAM wide, LPARAM low) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wide, low, SMTO_ABORTIFHUNG, AnswerMs, &result);
    return static_cast<LRESULT>(result);
}

std::string TextOf(HWND window) {
    const auto length = static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH, 0, 0));
    std::wstring text(length + 1, L'\0');
    const LRESULT got = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::min(static_cast<std::size_t>(got), length));
    text.erase(std::remove(text.begin(), text.end(), L'\r'), text.end());
    return ToUtf8(text);
}

// A window's caption is to be had also while its program is busy.
std::string CaptionOf(HWND window) {
    std::array<wchar_t, 1024> text{};
    InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
    return ToUtf8(text.data());
}

// A caption without the mark of the key that reaches it.
std::string Unmarked(std::string caption) {
    if (const auto mark = caption.find('&'); mark != std::string::npos) {
        caption.erase(mark, 1);
    }
    return caption;
}

BOOL CALLBACK CollectPart(HWND handle, LPARAM context) {
    if (IsWindowVisible(handle) != FALSE) {
        reinterpret_cast<std::vector<UserWindow>*>(context)->emplace_back(handle);
    }
    return TRUE;
}

DWORD ProcessOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

}  // namespace

bool UserWindow::TakesInput() const {
    for (HWND window = m_handle; window != nullptr;) {
        if (IsWindowEnabled(window) == FALSE) {
            return false;
        }
        window = (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0 ? GetParent(window) : nullptr;
    }
    return IsShown();
}

std::string UserWindow::Text() const {
    const bool isPart = (GetWindowLongW(m_handle, GWL_STYLE) & WS_CHILD) != 0;
    return isPart ? TextOf(m_handle) : CaptionOf(m_handle);
}

std::string UserWindow::ClassName() const {
    std::array<wchar_t, 256> name{};
    GetClassNameW(m_handle, name.data(), static_cast<int>(name.size()));
    return ToUtf8(name.data());
}

bool UserWindow::IsMessageBox() const {
    return ClassName() == MessageBoxClass && GetDlgItem(m_handle, MessageTextId) != nullptr;
}

std::string UserWindow::MessageText() const {
    return IsMessageBox() ? TextOf(GetDlgItem(m_handle, MessageTextId)) : std::string();
}

bool UserWindow::IsTicked() const {
    return Ask(m_handle, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

std::vector<UserWindow> UserWindow::Parts() const {
    std::vector<UserWindow> parts;
    EnumChildWindows(m_handle, CollectPart, reinterpret_cast<LPARAM>(&parts));
    return parts;
}

HWND UserWindow::Find(std::string_view name) const {
    const std::vector<UserWindow> parts = Parts();
    const auto first = [&](const auto& fits) {
        const auto found = std::find_if(parts.begin(), parts.end(), fits);
        return found != parts.end() ? found->Handle() : nullptr;
    };
    HWND found =
        first([&](const UserWindow& part) { return windows::HasWindowName(part.Handle(), name); });
    if (found == nullptr) {
        found = first([&](const UserWindow& part) { return Unmarked(part.Text()) == name; });
    }
    if (found == nullptr) {
        found = first([&](const UserWindow& part) { return part.ClassName() == name; });
    }
    return found;
}

UserWindow UserWindow::Part(std::string_view name) const {
    HWND found = nullptr;
    if (!WaitUntil([&] { return (found = Find(name)) != nullptr; })) {
        throw UserError("There is no \"" + std::string(name) + "\" in " + Describe());
    }
    return UserWindow(found);
}

// What has just been opened may take a moment to become ready.
void UserWindow::RequireInput() const {
    if (!WaitUntil([&] { return TakesInput(); })) {
        throw UserError("Out of reach: " + Describe());
    }
}

void UserWindow::Click() const {
    RequireInput();
    PostMessageW(m_handle, BM_CLICK, 0, 0);
}

void UserWindow::Type(std::string_view text) const {
    RequireInput();
    // The click brings the keyboard here.
    constexpr LPARAM Inside = MAKELPARAM(2, 2);
    PostMessageW(m_handle, WM_LBUTTONDOWN, MK_LBUTTON, Inside);
    PostMessageW(m_handle, WM_LBUTTONUP, 0, Inside);
    PostMessageW(m_handle, EM_SETSEL, 0, -1);
    const std::wstring wide = ToWide(std::string(text));
    if (wide.empty()) {
        PostMessageW(m_handle, WM_CHAR, VK_BACK, 0);
    }
    for (const wchar_t character : wide) {
        PostMessageW(m_handle, WM_CHAR, character, 1);
    }
    Expect(text);
}

void UserWindow::Tick(bool ticked) const {
    if (IsTicked() != ticked) {
        Click();
    }
    if (!WaitUntil([&] { return IsTicked() == ticked; })) {
        throw UserError("Can't be ticked as it should be: " + Describe());
    }
}

UserWindow UserWindow::Focused() const {
    GUITHREADINFO information{};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(GetWindowThreadProcessId(m_handle, nullptr), &information);
    return UserWindow(information.hwndFocus);
}

void UserWindow::Press(WPARAM key) const {
    RequireInput();
    // A window that has just come up gets the keyboard a moment later.
    constexpr DWORD FocusMs = 3000;
    WaitUntil(
        [&] {
            const HWND focused = Focused().Handle();
            return focused == m_handle || IsChild(m_handle, focused) != FALSE;
        },
        FocusMs);
    const HWND focused = Focused().Handle();
    if (focused == nullptr) {
        throw UserError("Without the keyboard: " + Describe());
    }
    PostMessageW(focused, WM_KEYDOWN, key, 1);
    PostMessageW(focused, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void UserWindow::ChooseFromMenu(char menu, char entry) const {
    RequireInput();
    PostMessageW(m_handle, WM_SYSCOMMAND, SC_KEYMENU, menu);
    // Before its window is there, the menu bar would take the entry's character for its own.
    const DWORD process = ProcessOf(m_handle);
    const bool isOpen = WaitUntil([&] {
        const HWND popup = FindWindowW(L"#32768", nullptr);
        return popup != nullptr && IsWindowVisible(popup) && ProcessOf(popup) == process;
    });
    if (!isOpen) {
        throw UserError("There is no menu " + std::string(1, menu) + " in " + Describe());
    }
    PostMessageW(m_handle, WM_CHAR, static_cast<WPARAM>(entry), 1);
}

void UserWindow::Expect(std::string_view text) const {
    const bool isPiece = text.size() > 2 && text.front() == '*' && text.back() == '*';
    const auto fits = [&](const std::string& content) {
        return isPiece ? content.find(text.substr(1, text.size() - 2)) != std::string::npos
                       : content == text;
    };
    if (!WaitUntil([&] { return fits(Text()); })) {
        throw UserError("Expected \"" + std::string(text) + "\", but there is " + Describe());
    }
}

void UserWindow::ExpectGone() const {
    if (!WaitUntil([&] { return !IsShown(); })) {
        throw UserError("Still there: " + Describe());
    }
}

std::string UserWindow::Describe() const {
    const auto line = [](const UserWindow& window) {
        return window.ClassName() + " \"" + window.Text() + "\"" +
               (window.TakesInput() ? "" : " (takes no input)");
    };
    std::string text = line(*this);
    for (const UserWindow& part : Parts()) {
        if (!part.Text().empty()) {
            text += "\n    " + line(part);
        }
    }
    return text;
}

}  // namespace krv::bench
