// SetupUser: the user in front of the settings dialog with the suite's own state control, in a
// thread of its own.
#pragma once

#include <string>
#include <thread>

#include "suite/windows/states/StateWindow.h"
#include "tests/windows/AboutBoxUser.h"
#include "tests/windows/ConnectDialogUser.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"

namespace krv::tests {

class SetupUser {
    using StateWindow = suite::StateWindow;

 public:
    // Runs the settings command while the user works in its dialog, which closing ends.
    template <class Work>
    static void SetUp(const windows::LateBound& control, const Work& work) {
        std::thread acting([&] {
            const SetupUser user;
            work(user);
            user.Close();
        });
        control.Call(L"DoSetup");
        acting.join();
    }

    SetupUser() {
        m_dialog = AboutBoxUser::FormWindow(L"Capture/Restore Settings");
        m_panel = ConnectDialogUser::Find(m_dialog, L"CvnStateWindow");
    }

    template <class Condition>
    static bool Waits(Condition&& holds) {
        for (int tries = 0; tries < 1000; ++tries) {
            if (holds()) {
                return true;
            }
            Sleep(10);
        }
        return false;
    }
    static std::string TextOf(HWND window) {
        wchar_t text[512] = L"";
        SendMessageW(window, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
        return windows::ToUtf8(text);
    }

    [[nodiscard]] HWND Dialog() const { return m_dialog; }
    [[nodiscard]] HWND Child(int id) const { return GetDlgItem(m_panel, id); }
    void Click(int id) const { SendMessageW(Child(id), BM_CLICK, 0, 0); }
    [[nodiscard]] bool CanClick(int id) const { return IsWindowEnabled(Child(id)) != 0; }
    void EnterName(const wchar_t* name) const {
        SendMessageW(Child(StateWindow::NameBox), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
    }
    void TypeInto(int id, wchar_t character) const {
        SendMessageW(Child(id), WM_CHAR, character, 1);
    }
    // A key that the window with the focus gets.
    void Press(WPARAM key) const {
        const HWND focused = FocusedWindow();
        PostMessageW(focused, WM_KEYDOWN, key, 1);
        PostMessageW(focused, WM_KEYUP, key, 1);
        // A sent message is answered when those that were posted before have been worked off.
        for (int turn = 0; turn < 5; ++turn) {
            SendMessageW(m_dialog, WM_NULL, 0, 0);
            Sleep(20);
        }
    }
    // Of the panel; 0 for a control of the form itself.
    [[nodiscard]] int FocusedChild() const {
        const HWND focused = FocusedWindow();
        return IsChild(m_panel, focused) != 0 ? GetDlgCtrlID(focused) : 0;
    }
    // The names of the states, the selected one in brackets.
    [[nodiscard]] std::string States() const {
        const HWND list = Child(StateWindow::StateListView);
        const auto count = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
        std::string names;
        for (int row = 0; row < count; ++row) {
            const std::string name = Cell(row, 0);
            const bool selected =
                SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
            names += (row == 0 ? "" : " ") + (selected ? '[' + name + ']' : name);
        }
        return names;
    }
    // The list belongs to this process, and so can read where a message points to.
    [[nodiscard]] std::string Cell(int row, int column) const {
        wchar_t text[128] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 128;
        SendMessageW(Child(StateWindow::StateListView), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return windows::ToUtf8(text);
    }
    void Select(int row) const {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(Child(StateWindow::StateListView), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }
    void RenameTo(const wchar_t* name) const {
        Click(StateWindow::RenameButton);
        const HWND list = Child(StateWindow::StateListView);
        const auto edit = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETEDITCONTROL, 0, 0));
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
        Press(VK_RETURN);
    }
    [[nodiscard]] std::string Status() const { return TextOf(Child(StateWindow::StatusLabel)); }
    void Close() const { PostMessageW(m_dialog, WM_CLOSE, 0, 0); }

 private:
    // The focus takes a moment to come, also after a message box.
    [[nodiscard]] HWND FocusedWindow() const {
        GUITHREADINFO information{};
        information.cbSize = sizeof information;
        EXPECT_TRUE(Waits([&] {
            GetGUIThreadInfo(GetWindowThreadProcessId(m_dialog, nullptr), &information);
            return IsChild(m_dialog, information.hwndFocus) != 0;
        }));
        return information.hwndFocus;
    }

    HWND m_dialog = nullptr;
    HWND m_panel = nullptr;
};

}  // namespace krv::tests
