// Which windows of the thread the user can reach while a dialog or a message box is up.
#include <windows.h>
// After windows.h, which it needs.
#include <commdlg.h>

#include <array>
#include <cwchar>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "tests/windows/support/AnswerBox.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ReplaceImport.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/WideText.h"
#include "windows/desktop/WindowsFileDialogs.h"
#include "windows/desktop/WindowsMessageBoxes.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::tests {
namespace {

class ActingForm final : public forms::Form {
 public:
    explicit ActingForm(ports::FormScreen& screen) : Form("ActingForm", screen) {
        Place = forms::Place{0, 0, 3000, 1500};
        Box.LayOut({100, 100, 1000, 300});
    }
    // What happens when it is activated; it is hidden then.
    std::function<void()> Act = [] {};
    forms::TextBox Box{*this, "Box"};
    forms::Timer Clock{*this, "Clock"};

 protected:
    void OnActivate() override {
        if (IsModal() && Act) {
            std::exchange(Act, nullptr)();
            Hide();
        }
    }
};

// A top-level window of the host.
class HostWindow {
 public:
    explicit HostWindow(DWORD style, const wchar_t* kind = L"STATIC", HWND owner = nullptr)
        : m_window(CreateWindowExW(0, kind, L"Host", style, 0, 0, 200, 100, owner, nullptr, nullptr,
                                   nullptr)) {}
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow() { DestroyWindow(m_window); }
    [[nodiscard]] HWND Handle() const { return m_window; }

 private:
    HWND m_window;
};

class ModalWindows : public ::testing::Test {
 protected:
    // One letter for each window: whether it is enabled.
    [[nodiscard]] std::string Enabled() const {
        std::string enabled;
        for (const HWND window :
             {m_sheet.Handle(), m_other.Handle(), m_disabled.Handle(), m_hidden.Handle(),
              m_screen.WindowOf(m_modeless), m_screen.WindowOf(m_modal)}) {
            enabled += IsWindowEnabled(window) != 0 ? 'e' : 'd';
        }
        return enabled;
    }

    const HostWindow m_sheet{WS_OVERLAPPEDWINDOW | WS_VISIBLE};
    const HostWindow m_other{WS_OVERLAPPEDWINDOW | WS_VISIBLE};
    const HostWindow m_disabled{WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_DISABLED};
    const HostWindow m_hidden{WS_OVERLAPPEDWINDOW};
    windows::WindowsScreen m_screen;
    ActingForm m_modeless{m_screen};
    ActingForm m_modal{m_screen};
};

TEST_F(ModalWindows, KeepTheUserFromAllOthersAndGiveThemBackAsTheyWere) {
    m_modeless.ShowModeless();
    m_modal.Load();
    ASSERT_EQ(Enabled(), "eedeee");
    ActingForm inner(m_screen);
    ActingForm late(m_screen);
    inner.Act = [&] {
        EXPECT_EQ(Enabled(), "dddedd");
        late.ShowModeless();
    };
    m_modal.Act = [&] {
        EXPECT_EQ(Enabled(), "dddede");
        inner.ShowModal();
        EXPECT_EQ(Enabled(), "dddede");
        EXPECT_EQ(IsWindowEnabled(m_screen.WindowOf(late)), 0) << "one modal form is still up";
        late.Hide();
        late.Act = [&] { EXPECT_NE(IsWindowEnabled(m_screen.WindowOf(late)), 0); };
        late.ShowModal();
    };
    m_modal.ShowModal(reinterpret_cast<ports::WindowHandle>(m_sheet.Handle()));
    EXPECT_EQ(Enabled(), "eedeee");
    EXPECT_NE(IsWindowEnabled(m_screen.WindowOf(late)), 0);

    m_modal.Act = [&] {
        m_modal.Unload();
        EXPECT_EQ(Enabled().substr(0, 4), "eede");
    };
    m_modal.ShowModal();
    m_modal.Act = [] { throw Error(5, "failed"); };
    EXPECT_NE(ErrorOf([&] { m_modal.ShowModal(); }), "none");
    EXPECT_EQ(Enabled(), "eedeee");
}

TEST_F(ModalWindows, AreMessageBoxesToo) {
    m_modeless.ShowModeless();
    m_modal.Load();
    AnswerBox(L"Boxes", IDOK, [&] { EXPECT_EQ(Enabled().substr(0, 4), "ddde"); });
    windows::WindowsMessageBoxes(m_screen).Show({"Text", "Boxes"});
    EXPECT_EQ(Enabled(), "eedeee");
}

TEST_F(ModalWindows, KeepTheUserFromWhatTheApplicationOpensMeanwhile) {
    std::vector<std::unique_ptr<HostWindow>> opened;
    const auto enabled = [&] {
        std::string text;
        for (const auto& window : opened) {
            text += IsWindowEnabled(window->Handle()) != 0 ? 'e' : 'd';
        }
        return text;
    };
    // Frames of other workbooks, one of them on the form's own behalf; then a list that drops down,
    // and a question of the application's.
    const auto openThem = [&] {
        opened.clear();
        for (const HWND owner : {HWND{}, m_sheet.Handle(), m_screen.WindowOf(m_modal)}) {
            opened.push_back(
                std::make_unique<HostWindow>(WS_OVERLAPPEDWINDOW | WS_VISIBLE, L"STATIC", owner));
            EXPECT_EQ(GetActiveWindow() == opened.back()->Handle(), enabled().back() == 'e');
        }
        opened.push_back(std::make_unique<HostWindow>(WS_POPUP | WS_BORDER | WS_VISIBLE));
        opened.push_back(std::make_unique<HostWindow>(WS_POPUP | WS_CAPTION | WS_VISIBLE, L"#32770",
                                                      m_sheet.Handle()));
        EXPECT_EQ(enabled(), "ddeee");
        EnableWindow(opened.front()->Handle(), TRUE);
        EXPECT_EQ(enabled(), "ddeee");
        ShowWindow(m_hidden.Handle(), SW_SHOWNA);
        EXPECT_EQ(Enabled().substr(0, 4), "dddd");
    };
    const auto expectThemBack = [&] {
        EXPECT_EQ(enabled(), "eeeee");
        ShowWindow(m_hidden.Handle(), SW_HIDE);
        EXPECT_EQ(Enabled().substr(0, 4), "eede");
    };
    m_modal.Act = openThem;
    m_modal.ShowModal();
    expectThemBack();
    // In the system's own loop; at its end they stay with the form below.
    m_modal.Act = [&] {
        AnswerBox(L"Boxes", IDOK, openThem);
        windows::WindowsMessageBoxes(m_screen).Show({"Text", "Boxes"});
        EXPECT_EQ(enabled(), "ddeee");
    };
    m_modal.ShowModal();
    expectThemBack();
}

// The system's dialog refuses to open with a name that can be no file's.
// Windows opens no file dialog with a name that can be no file's; Wine opens it with any.
BOOL WINAPI ChooseUnlessNamed(OPENFILENAMEW* dialog) {
    const bool isNamed = *dialog->lpstrFile != L'\0';
    std::wcscpy(dialog->lpstrFile, L"C:\\chosen.txt");
    return isNamed ? FALSE : TRUE;
}

DWORD WINAPI InvalidFileName() {
    return FNERR_INVALIDFILENAME;
}

TEST_F(ModalWindows, FileDialogsOpenWithoutANameThatTheSystemRefuses) {
    const HMODULE program = GetModuleHandleW(nullptr);
    const std::pair<void*, void*> replaced[] = {
        {SystemFunction(L"comdlg32.dll", "GetOpenFileNameW"),
         reinterpret_cast<void*>(&ChooseUnlessNamed)},
        {SystemFunction(L"comdlg32.dll", "CommDlgExtendedError"),
         reinterpret_cast<void*>(&InvalidFileName)}};
    for (const auto& [function, replacement] : replaced) {
        ASSERT_TRUE(ReplaceImport(program, function, replacement));
    }
    EXPECT_EQ(windows::WindowsFileDialogs(m_screen).ChooseFileToOpen({"Boxes", "All|*.*", "a<b>"}),
              "C:\\chosen.txt");
    for (const auto& [function, replacement] : replaced) {
        ReplaceImport(program, replacement, function);
    }
}

// Of a text in one line, as this window would show it.
LONG WidthIn(HWND window, HGDIOBJ font, const std::wstring& text) {
    const windows::WindowContext context(window);
    const windows::SelectedObject selected(context.Get(), font);
    SIZE size{};
    GetTextExtentPoint32W(context.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
}

LONG WidthOf(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return area.right;
}

TEST_F(ModalWindows, MessageBoxesAreAsWideAsTheirTitleAndTheirLines) {
    const std::string boxTitle = "Boxes with a title that is longer than all of the text";
    const std::wstring title = windows::ToWide(boxTitle);
    std::string line;
    for (const int words : {1, 20}) {
        while (line.size() < static_cast<std::size_t>(words) * 5) {
            line += "word ";
        }
        AnswerBox(title.c_str(), IDOK, [&] {
            const HWND box = FindWindowW(L"#32770", title.c_str());
            const HWND shown = GetDlgItem(box, 0xFFFF);
            auto* const font = reinterpret_cast<HGDIOBJ>(SendMessageW(shown, WM_GETFONT, 0, 0));
            EXPECT_GT(WidthOf(box), WidthIn(box, font, title));
            EXPECT_GE(WidthOf(shown), WidthIn(shown, font, windows::ToWide(line)));
            RECT inside{};
            GetClientRect(box, &inside);
            RECT button{};
            GetWindowRect(GetDlgItem(box, IDOK), &button);
            MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&button), 2);
            EXPECT_LT(button.bottom, inside.bottom);
            EXPECT_GT(button.left, 0);
        });
        windows::WindowsMessageBoxes(m_screen).Show({line + '\n' + line + "\n" + line, boxTitle});
    }
}

TEST_F(ModalWindows, ComeAnewWhenTheirOwnerTookThemAlong) {
    {
        const HostWindow owner(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
        m_modeless.ShowModeless(reinterpret_cast<ports::WindowHandle>(owner.Handle()));
        m_modeless.Box.Text = "entered";
    }
    EXPECT_EQ(m_screen.WindowOf(m_modeless), nullptr);
    EXPECT_FALSE(m_modeless.IsVisible());
    m_modeless.Clock.SetInterval(10);
    Sleep(50);
    MSG message{};
    EXPECT_EQ(PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE), 0);
    m_modeless.ShowModeless();
    const HWND window = m_screen.WindowOf(m_modeless);
    ASSERT_NE(IsWindowVisible(window), 0);
    std::array<wchar_t, 20> text{};
    GetWindowTextW(FindWindowExW(window, nullptr, L"EDIT", nullptr), text.data(), 20);
    EXPECT_STREQ(text.data(), L"entered");
}

}  // namespace
}  // namespace krv::tests
