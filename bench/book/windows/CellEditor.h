// CellEditor: the box that lies over a cell while its content is typed. Enter takes what was typed,
// Escape doesn't. Owned by the grid.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "windows/base/WindowHook.h"

namespace krv::bench {

class CellEditor {
 public:
    // Receives the text (UTF-8) of an editing that isn't given up.
    using Finished = std::function<void(const std::string& text)>;

    explicit CellEditor(Finished finished) : m_finished(std::move(finished)) {}
    CellEditor(const CellEditor&) = delete;
    CellEditor& operator=(const CellEditor&) = delete;
    ~CellEditor() { Close(); }

    void Open(HWND grid, const RECT& place, HFONT font, const std::wstring& text);
    // Ends the editing, if any.
    void Finish();
    void GiveUp() { Close(); }
    [[nodiscard]] bool IsOpen() const { return m_box != nullptr; }

 private:
    LRESULT HandleBoxMessage(HWND box, UINT message, WPARAM wide, LPARAM low);
    using BoxHook = windows::WindowHook<&CellEditor::HandleBoxMessage>;

    // Gives the keyboard back to the grid.
    void Close();

    Finished m_finished;
    HWND m_box = nullptr;
};

}  // namespace krv::bench
