// ProgramMenu: a main window's menu with the keys for its commands.
#pragma once

#include <windows.h>

#include <vector>

namespace krv::bench {

// The commands that each program has.
namespace StandardCommand {
constexpr UINT New = 100;
constexpr UINT Open = 101;
constexpr UINT Save = 102;
constexpr UINT SaveAs = 103;
constexpr UINT Exit = 104;
constexpr UINT About = 105;
// The first of a program's own.
constexpr UINT FirstOwn = 150;
}  // namespace StandardCommand

struct MenuItem {
    UINT id = 0;
    // Null for a line between items.
    const wchar_t* text = nullptr;
    // The letter that gives the command together with Ctrl, or none.
    char key = 0;
};

struct MenuList {
    const wchar_t* title;
    std::vector<MenuItem> items;
};

class ProgramMenu {
 public:
    explicit ProgramMenu(const std::vector<MenuList>& lists);
    ProgramMenu(const ProgramMenu&) = delete;
    ProgramMenu& operator=(const ProgramMenu&) = delete;
    ~ProgramMenu() { DestroyAcceleratorTable(m_keys); }

    // Belongs to the window that it is given to.
    [[nodiscard]] HMENU Bar() const { return m_bar; }
    [[nodiscard]] HMENU List(int position) const { return GetSubMenu(m_bar, position); }
    // Sends the window the command of a key; false when the key has none.
    [[nodiscard]] bool TakesKey(HWND window, MSG& message) const {
        return TranslateAcceleratorW(window, m_keys, &message) != 0;
    }

 private:
    HMENU m_bar;
    HACCEL m_keys;
};

}  // namespace krv::bench
