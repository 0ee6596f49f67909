#include "suite/windows/discovery/FoundListBox.h"

#include <windowsx.h>

#include <algorithm>

#include "windows/base/DeviceContext.h"

namespace krv::suite {

void FoundListBox::Show(const std::vector<Line>& lines) {
    if (lines == m_lines) {
        return;
    }
    const std::string selected = SelectedAddress();
    const int top = ListBox_GetTopIndex(m_list);
    // From the beginning of the list, lines that come first are seen.
    const std::string onTop = top > 0 ? AddressAt(top) : std::string();
    SetWindowRedraw(m_list, FALSE);
    RemoveAllBut(lines);
    Insert(lines);
    // Selecting scrolls, so that what was on top comes last.
    ListBox_SetCurSel(m_list, IndexOf(selected));
    ListBox_SetTopIndex(m_list, std::max(IndexOf(onTop), 0));
    SetWindowRedraw(m_list, TRUE);
    Measure();
    InvalidateRect(m_list, nullptr, TRUE);
}

void FoundListBox::RemoveAllBut(const std::vector<Line>& lines) {
    for (std::size_t index = m_lines.size(); index-- > 0;) {
        if (std::ranges::find(lines, m_lines[index]) == lines.end()) {
            ListBox_DeleteString(m_list, static_cast<int>(index));
            m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }
}

void FoundListBox::Insert(const std::vector<Line>& lines) {
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (index == m_lines.size() || m_lines[index] != lines[index]) {
            ListBox_InsertString(m_list, static_cast<int>(index), lines[index].text.c_str());
            m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(index), lines[index]);
        }
    }
}

void FoundListBox::Measure() {
    const windows::WindowContext context(m_list);
    const windows::SelectedObject font(context.Get(), GetWindowFont(m_list));
    LONG widest = 0;
    for (const Line& line : m_lines) {
        SIZE size{};
        GetTextExtentPoint32W(context.Get(), line.text.c_str(), static_cast<int>(line.text.size()),
                              &size);
        widest = std::max(widest, size.cx);
    }
    // With a little room at both ends.
    ListBox_SetHorizontalExtent(m_list, static_cast<int>(widest) + 8);
}

std::string FoundListBox::SelectedAddress() const {
    return AddressAt(ListBox_GetCurSel(m_list));
}

std::string FoundListBox::AddressAt(int index) const {
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < m_lines.size();
    return isThere ? m_lines[static_cast<std::size_t>(index)].address : std::string();
}

int FoundListBox::IndexOf(const std::string& address) const {
    const auto found = std::ranges::find(m_lines, address, &Line::address);
    return found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
}

}  // namespace krv::suite
