// BookMenu: the main window's menu with the keys for its commands, and the list of open books in
// it.
#pragma once

#include <windows.h>

#include "bench/office/BookApplication.h"

namespace krv::bench {

namespace CommandId {
constexpr UINT New = 100;
constexpr UINT Open = 101;
constexpr UINT Save = 102;
constexpr UINT SaveAs = 103;
constexpr UINT Close = 104;
constexpr UINT Exit = 105;
constexpr UINT About = 106;
// One for each open book.
constexpr UINT FirstBook = 200;
constexpr UINT LastBook = 999;
}  // namespace CommandId

class BookMenu {
 public:
    BookMenu();
    BookMenu(const BookMenu&) = delete;
    BookMenu& operator=(const BookMenu&) = delete;
    ~BookMenu() { DestroyAcceleratorTable(m_keys); }

    // Belongs to the window that it is given to.
    [[nodiscard]] HMENU Bar() const { return m_bar; }
    // Sends the window the command of a key; false when the key has none.
    [[nodiscard]] bool TakesKey(HWND window, MSG& message) const {
        return TranslateAcceleratorW(window, m_keys, &message) != 0;
    }
    // The active book is checked.
    void ShowBooks(const BookApplication& application);

 private:
    HMENU m_bar;
    HMENU m_books;
    HACCEL m_keys;
};

}  // namespace krv::bench
