#include "bench/office/windows/BookMenu.h"

#include <array>

#include "windows/text/WideText.h"

namespace krv::bench {
namespace {

void Append(HMENU menu, UINT id, const wchar_t* text) {
    AppendMenuW(menu, MF_STRING, id, text);
}

HMENU NewFileMenu() {
    const HMENU file = CreatePopupMenu();
    Append(file, CommandId::New, L"&New\tCtrl+N");
    Append(file, CommandId::Open, L"&Open...\tCtrl+O");
    Append(file, CommandId::Save, L"&Save\tCtrl+S");
    Append(file, CommandId::SaveAs, L"Save &As...");
    Append(file, CommandId::Close, L"&Close\tCtrl+W");
    AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
    Append(file, CommandId::Exit, L"E&xit");
    return file;
}

HACCEL NewKeys() {
    std::array<ACCEL, 4> keys{{{FCONTROL | FVIRTKEY, 'N', CommandId::New},
                               {FCONTROL | FVIRTKEY, 'O', CommandId::Open},
                               {FCONTROL | FVIRTKEY, 'S', CommandId::Save},
                               {FCONTROL | FVIRTKEY, 'W', CommandId::Close}}};
    return CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

}  // namespace

BookMenu::BookMenu() : m_bar(CreateMenu()), m_books(CreatePopupMenu()), m_keys(NewKeys()) {
    const HMENU help = CreatePopupMenu();
    Append(help, CommandId::About, L"&About krvbook");
    AppendMenuW(m_bar, MF_POPUP, reinterpret_cast<UINT_PTR>(NewFileMenu()), L"&File");
    AppendMenuW(m_bar, MF_POPUP, reinterpret_cast<UINT_PTR>(m_books), L"&Window");
    AppendMenuW(m_bar, MF_POPUP, reinterpret_cast<UINT_PTR>(help), L"&Help");
}

void BookMenu::ShowBooks(const BookApplication& application) {
    while (DeleteMenu(m_books, 0, MF_BYPOSITION) != FALSE) {
    }
    UINT id = CommandId::FirstBook;
    for (const auto& book : application.Books()) {
        const UINT mark = book == application.ActiveBook() ? MF_CHECKED : MF_UNCHECKED;
        if (id <= CommandId::LastBook) {
            AppendMenuW(m_books, MF_STRING | mark, id++, windows::ToWide(book->Name()).c_str());
        }
    }
}

}  // namespace krv::bench
