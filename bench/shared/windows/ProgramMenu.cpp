#include "bench/shared/windows/ProgramMenu.h"

#include <array>

#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

HMENU AddList(HMENU bar, const wchar_t* title) {
    const HMENU list = CreatePopupMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(list), title);
    return list;
}

}  // namespace

ProgramMenu::ProgramMenu(bool listsDocuments) : m_bar(CreateMenu()) {
    const HMENU files = AddList(m_bar, L"&File");
    AppendMenuW(files, MF_STRING, MenuCommand::New, L"&New\tCtrl+N");
    AppendMenuW(files, MF_STRING, MenuCommand::Open, L"&Open...\tCtrl+O");
    AppendMenuW(files, MF_STRING, MenuCommand::Save, L"&Save\tCtrl+S");
    AppendMenuW(files, MF_STRING, MenuCommand::SaveAs, L"Save &As...");
    AppendMenuW(files, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(files, MF_STRING, MenuCommand::Exit, L"E&xit");
    if (listsDocuments) {
        m_documents = AddList(m_bar, L"&Window");
    }
    AppendMenuW(AddList(m_bar, L"&Help"), MF_STRING, MenuCommand::About, L"&About");
    constexpr BYTE WithControl = FCONTROL | FVIRTKEY;
    std::array<ACCEL, 3> keys{{{WithControl, 'N', MenuCommand::New},
                               {WithControl, 'O', MenuCommand::Open},
                               {WithControl, 'S', MenuCommand::Save}}};
    m_keys = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

void ProgramMenu::ListDocuments(const std::vector<std::string>& names,
                                const std::string& active) const {
    if (m_documents == nullptr) {
        return;
    }
    while (DeleteMenu(m_documents, 0, MF_BYPOSITION) != FALSE) {
    }
    UINT id = MenuCommand::FirstDocument;
    for (const std::string& name : names) {
        const UINT mark = name == active ? MF_CHECKED : MF_UNCHECKED;
        AppendMenuW(m_documents, MF_STRING | mark, id++, windows::ToWide(name).c_str());
    }
}

}  // namespace krv::bench
