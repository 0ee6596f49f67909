#include "windows/forms/ListViewWindow.h"

#include <commctrl.h>

#include "windows/base/LastColumn.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

void AddColumns(HWND window, const forms::ListView& list) {
    SendMessageW(window, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    int index = 0;
    for (const forms::ListColumn& column : list.Columns) {
        std::wstring heading = ToWide(column.heading);
        LVCOLUMNW description{};
        description.mask = LVCF_TEXT | LVCF_SUBITEM;
        description.iSubItem = index;
        description.pszText = heading.data();
        SendMessageW(window, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index++),
                     reinterpret_cast<LPARAM>(&description));
    }
}

void SetCell(HWND window, int row, int column, const std::string& text) {
    std::wstring wide = ToWide(text);
    LVITEMW cell{};
    cell.mask = LVIF_TEXT;
    cell.iItem = row;
    cell.iSubItem = column;
    cell.pszText = wide.data();
    SendMessageW(window, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                 reinterpret_cast<LPARAM>(&cell));
}

}  // namespace

void FillListView(HWND window, const forms::ListView& list) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(window, LVM_GETHEADER, 0, 0));
    if (SendMessageW(header, HDM_GETITEMCOUNT, 0, 0) == 0) {
        AddColumns(window, list);
    }
    SendMessageW(window, LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const forms::ListView::Row& texts : list.Items.Get()) {
        for (std::size_t column = 0; column < texts.size(); ++column) {
            SetCell(window, row, static_cast<int>(column), texts[column]);
        }
        ++row;
    }
    ExtendLastColumn(window);
}

void LayOutColumns(HWND window, const forms::ListView& list, const Scale& scale) {
    for (std::size_t column = 0; column < list.Columns.size(); ++column) {
        SendMessageW(window, LVM_SETCOLUMNWIDTH, column,
                     MAKELPARAM(scale.Pixels(list.Columns[column].width), 0));
    }
    ExtendLastColumn(window);
}

}  // namespace krv::windows
