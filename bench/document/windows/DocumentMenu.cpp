#include "bench/document/windows/DocumentMenu.h"

#include <array>

namespace krv::bench {
namespace {

struct Item {
    UINT id;
    const wchar_t* text;
};

template <std::size_t Count>
void AppendMenuOf(HMENU bar, const wchar_t* title, const std::array<Item, Count>& items) {
    const HMENU menu = CreatePopupMenu();
    for (const Item& item : items) {
        AppendMenuW(menu, item.text != nullptr ? MF_STRING : MF_SEPARATOR, item.id, item.text);
    }
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), title);
}

constexpr std::array<Item, 6> FileItems{{{DocumentCommand::New, L"&New\tCtrl+N"},
                                         {DocumentCommand::Open, L"&Open...\tCtrl+O"},
                                         {DocumentCommand::Save, L"&Save\tCtrl+S"},
                                         {DocumentCommand::SaveAs, L"Save &As..."},
                                         {0, nullptr},
                                         {DocumentCommand::Exit, L"E&xit"}}};
constexpr std::array<Item, 1> InsertItems{{{DocumentCommand::InsertPicture, L"&Picture..."}}};
constexpr std::array<Item, 1> HelpItems{{{DocumentCommand::About, L"&About krvdoc"}}};

HACCEL NewKeys() {
    std::array<ACCEL, 3> keys{{{FCONTROL | FVIRTKEY, 'N', DocumentCommand::New},
                               {FCONTROL | FVIRTKEY, 'O', DocumentCommand::Open},
                               {FCONTROL | FVIRTKEY, 'S', DocumentCommand::Save}}};
    return CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

}  // namespace

DocumentMenu::DocumentMenu() : m_bar(CreateMenu()), m_keys(NewKeys()) {
    AppendMenuOf(m_bar, L"&File", FileItems);
    AppendMenuOf(m_bar, L"&Insert", InsertItems);
    AppendMenuOf(m_bar, L"&Help", HelpItems);
}

}  // namespace krv::bench
