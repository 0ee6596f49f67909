#include "bench/book/windows/CellEditor.h"

#include <commctrl.h>

#include <utility>

#include "bench/shared/windows/WindowText.h"

namespace krv::bench {

void CellEditor::Open(HWND grid, const RECT& place, HFONT font, const std::wstring& text) {
    Close();
    m_box = CreateWindowExW(0, WC_EDITW, text.c_str(),
                            WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, place.left - 1,
                            place.top - 1, place.right - place.left + 1,
                            place.bottom - place.top + 1, grid, nullptr, nullptr, nullptr);
    SendMessageW(m_box, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(m_box, EM_SETSEL, 0x7FFF, 0x7FFF);
    BoxHook::Attach(m_box, *this);
    SetFocus(m_box);
}

void CellEditor::Finish() {
    if (m_box == nullptr) {
        return;
    }
    const std::string text = TextOf(m_box);
    Close();
    m_finished(text);
}

void CellEditor::Close() {
    // Destroying the box takes its focus, which would end the editing once more.
    const HWND box = std::exchange(m_box, nullptr);
    if (box == nullptr) {
        return;
    }
    BoxHook::Detach(box);
    if (GetFocus() == box) {
        SetFocus(GetParent(box));
    }
    DestroyWindow(box);
}

LRESULT CellEditor::HandleBoxMessage(HWND box, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_KEYDOWN && wide == VK_RETURN) {
        Finish();
        return 0;
    }
    if (message == WM_KEYDOWN && wide == VK_ESCAPE) {
        GiveUp();
        return 0;
    }
    // A dialog or another program in front leaves the cell being edited.
    if (message == WM_KILLFOCUS &&
        IsChild(GetAncestor(box, GA_ROOT), reinterpret_cast<HWND>(wide)) != FALSE) {
        Finish();
        return 0;
    }
    return DefSubclassProc(box, message, wide, low);
}

}  // namespace krv::bench
