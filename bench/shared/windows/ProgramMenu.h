// ProgramMenu: a main window's menu with the keys for its commands.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace krv::bench {

namespace MenuCommand {
constexpr UINT New = 100;
constexpr UINT Open = 101;
constexpr UINT Save = 102;
constexpr UINT SaveAs = 103;
constexpr UINT Exit = 104;
constexpr UINT About = 105;
// One for each open document, in their order.
constexpr UINT FirstDocument = 200;
}  // namespace MenuCommand

class ProgramMenu {
 public:
    // With a list of the open documents or without.
    explicit ProgramMenu(bool listsDocuments);
    ProgramMenu(const ProgramMenu&) = delete;
    ProgramMenu& operator=(const ProgramMenu&) = delete;
    ~ProgramMenu() { DestroyAcceleratorTable(m_keys); }

    // Belongs to the window that it is given to.
    [[nodiscard]] HMENU Bar() const { return m_bar; }
    // The active one gets a mark.
    void ListDocuments(const std::vector<std::string>& names, const std::string& active) const;
    // Sends the window the command of a key; false when the key has none.
    [[nodiscard]] bool TakesKey(HWND window, MSG& message) const {
        return TranslateAcceleratorW(window, m_keys, &message) != 0;
    }

 private:
    HMENU m_bar;
    // Null without a list.
    HMENU m_documents = nullptr;
    HACCEL m_keys;
};

}  // namespace krv::bench
