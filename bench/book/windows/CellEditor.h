// CellEditor: the box that lies over a cell while its content is typed. Owned by the grid.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

namespace krv::bench {

enum class EditEnd : std::uint8_t { Cancel, Stay, Down, Up, Right, Left };

class CellEditor {
 public:
    // Called once for each editing that ends; the text is UTF-8.
    using Finished = std::function<void(EditEnd end, const std::string& text)>;

    explicit CellEditor(Finished finished) : m_finished(std::move(finished)) {}
    CellEditor(const CellEditor&) = delete;
    CellEditor& operator=(const CellEditor&) = delete;
    ~CellEditor() { Close(); }

    void Open(HWND grid, const RECT& place, HFONT font, const std::string& text);
    // Ends the editing, if any, as if the user had ended it so.
    void Finish(EditEnd end);
    [[nodiscard]] bool IsOpen() const { return m_box != nullptr; }
    [[nodiscard]] HWND Box() const { return m_box; }

 private:
    static LRESULT CALLBACK BoxProcedure(HWND box, UINT message, WPARAM wide, LPARAM low, UINT_PTR,
                                         DWORD_PTR editor);
    [[nodiscard]] static std::optional<EditEnd> EndFor(WPARAM key);
    void Close();

    Finished m_finished;
    HWND m_box = nullptr;
};

}  // namespace krv::bench
