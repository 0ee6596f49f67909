#include "windows/desktop/WindowsFileDialogs.h"

#include <windows.h>
// After windows.h, which it needs.
#include <commdlg.h>

#include <algorithm>
#include <vector>

#include "windows/text/WideText.h"

namespace krv::windows {
namespace {

// Room for a path of any length that the system supports.
constexpr std::size_t PathRoom = 32768;

// The platform separates a filter's texts by NUL characters and ends it with two.
std::wstring PlatformFilter(const std::string& filter) {
    std::wstring wide = ToWide(filter);
    std::replace(wide.begin(), wide.end(), L'|', L'\0');
    wide.append(2, L'\0');
    return wide;
}

}  // namespace

std::optional<std::string> WindowsFileDialogs::ChooseFileToOpen(
    const desktop::FileDialogRequest& request) {
    const std::wstring filter = PlatformFilter(request.filter);
    const std::wstring title = ToWide(request.title);
    std::vector<wchar_t> path(PathRoom, L'\0');
    const std::wstring start = ToWide(request.fileName);
    std::copy_n(start.begin(), std::min(start.size(), path.size() - 1), path.begin());
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = m_screen.ActiveWindow();
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrTitle = title.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (GetOpenFileNameW(&dialog) == 0) {
        return std::nullopt;
    }
    return ToUtf8(path.data());
}

}  // namespace krv::windows
