// FoundListBox: the list box of the instruments that were found. Lines come and go while the user
// reads: what is selected stays selected, and what is on top stays on top.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace krv::suite {

class FoundListBox {
 public:
    struct Line {
        std::string address;
        std::wstring text;
        friend bool operator==(const Line&, const Line&) = default;
    };

    // An empty list box of the system.
    explicit FoundListBox(HWND list = nullptr) : m_list(list) {}

    [[nodiscard]] HWND Window() const noexcept { return m_list; }
    // The lines that are there already must stand in this order, too.
    void Show(const std::vector<Line>& lines);
    // Makes room for the whole of each line, in the font that the list has now.
    void Measure();
    // Empty without a selection.
    [[nodiscard]] std::string SelectedAddress() const;

 private:
    void RemoveAllBut(const std::vector<Line>& lines);
    void Insert(const std::vector<Line>& lines);
    [[nodiscard]] std::string AddressAt(int index) const;
    // -1 for none.
    [[nodiscard]] int IndexOf(const std::string& address) const;

    HWND m_list;
    std::vector<Line> m_lines;
};

}  // namespace krv::suite
