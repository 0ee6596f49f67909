// DocumentMenu: the main window's menu with the keys for its commands.
#pragma once

#include <windows.h>

namespace krv::bench {

namespace DocumentCommand {
constexpr UINT New = 100;
constexpr UINT Open = 101;
constexpr UINT Save = 102;
constexpr UINT SaveAs = 103;
constexpr UINT Exit = 104;
constexpr UINT InsertPicture = 105;
constexpr UINT About = 106;
}  // namespace DocumentCommand

class DocumentMenu {
 public:
    DocumentMenu();
    DocumentMenu(const DocumentMenu&) = delete;
    DocumentMenu& operator=(const DocumentMenu&) = delete;
    ~DocumentMenu() { DestroyAcceleratorTable(m_keys); }

    // Belongs to the window that it is given to.
    [[nodiscard]] HMENU Bar() const { return m_bar; }
    // Sends the window the command of a key; false when the key has none.
    [[nodiscard]] bool TakesKey(HWND window, MSG& message) const {
        return TranslateAcceleratorW(window, m_keys, &message) != 0;
    }

 private:
    HMENU m_bar;
    HACCEL m_keys;
};

}  // namespace krv::bench
