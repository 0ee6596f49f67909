#include "bench/book/windows/CellEditor.h"

#include <commctrl.h>

#include <utility>

#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

bool IsShiftDown() {
    return GetKeyState(VK_SHIFT) < 0;
}

std::string TextOf(HWND box) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(box)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(box, text.data(), static_cast<int>(text.size()))));
    return windows::ToUtf8(text);
}

}  // namespace

void CellEditor::Open(HWND grid, const RECT& place, HFONT font, const std::string& text) {
    Close();
    m_box = CreateWindowExW(0, WC_EDITW, windows::ToWide(text).c_str(),
                            WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, place.left - 1,
                            place.top - 1, place.right - place.left + 1,
                            place.bottom - place.top + 1, grid, nullptr, nullptr, nullptr);
    SendMessageW(m_box, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(m_box, EM_SETSEL, 0x7FFF, 0x7FFF);
    SetWindowSubclass(m_box, &CellEditor::BoxProcedure, 1, reinterpret_cast<DWORD_PTR>(this));
    SetFocus(m_box);
}

void CellEditor::Finish(EditEnd end) {
    if (m_box == nullptr) {
        return;
    }
    const std::string text = TextOf(m_box);
    const HWND grid = GetParent(m_box);
    const bool hadFocus = GetFocus() == m_box;
    Close();
    if (hadFocus) {
        SetFocus(grid);
    }
    m_finished(end, text);
}

void CellEditor::Close() {
    // Destroying the box takes its focus, which would end the editing once more.
    if (const HWND box = std::exchange(m_box, nullptr); box != nullptr) {
        RemoveWindowSubclass(box, &CellEditor::BoxProcedure, 1);
        DestroyWindow(box);
    }
}

LRESULT CALLBACK CellEditor::BoxProcedure(HWND box, UINT message, WPARAM wide, LPARAM low, UINT_PTR,
                                          DWORD_PTR editor) {
    auto& self = *reinterpret_cast<CellEditor*>(editor);
    if (message == WM_GETDLGCODE) {
        return DLGC_WANTALLKEYS;
    }
    if (message == WM_KEYDOWN) {
        if (const auto end = EndFor(wide)) {
            self.Finish(*end);
            return 0;
        }
    }
    // The keys that end the editing would only beep.
    if (message == WM_CHAR && (wide == VK_RETURN || wide == VK_ESCAPE || wide == VK_TAB)) {
        return 0;
    }
    // A dialog or another program in front leaves the cell being edited.
    if (message == WM_KILLFOCUS &&
        IsChild(GetAncestor(box, GA_ROOT), reinterpret_cast<HWND>(wide)) != FALSE) {
        self.Finish(EditEnd::Stay);
        return 0;
    }
    return DefSubclassProc(box, message, wide, low);
}

std::optional<EditEnd> CellEditor::EndFor(WPARAM key) {
    switch (key) {
        case VK_RETURN:
            return IsShiftDown() ? EditEnd::Up : EditEnd::Down;
        case VK_TAB:
            return IsShiftDown() ? EditEnd::Left : EditEnd::Right;
        case VK_ESCAPE:
            return EditEnd::Cancel;
        case VK_DOWN:
            return EditEnd::Down;
        case VK_UP:
            return EditEnd::Up;
        default:
            return std::nullopt;
    }
}

}  // namespace krv::bench
