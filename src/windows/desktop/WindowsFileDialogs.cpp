#include "windows/desktop/WindowsFileDialogs.h"

#include <windows.h>
// After windows.h, which it needs.
#include <commdlg.h>

#include <algorithm>
#include <vector>

#include "windows/base/DisabledWindows.h"
#include "windows/base/WideText.h"

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

// The first kind's extension. Given one at all, the dialog adds that of the kind that is chosen.
std::wstring DefaultExtension(const std::string& filter) {
    const auto start = filter.find("|*.");
    if (start == std::string::npos) {
        return {};
    }
    const auto end = filter.find_first_of("|;", start + 3);
    return ToWide(filter.substr(start + 3, end - start - 3));
}

// Shows the dialog. It refuses to open with a first name that can be no file's: then it opens
// without one.
bool Ask(OPENFILENAMEW& dialog, bool saves) {
    const auto ask = saves ? &GetSaveFileNameW : &GetOpenFileNameW;
    if (ask(&dialog) != 0) {
        return true;
    }
    if (CommDlgExtendedError() != FNERR_INVALIDFILENAME) {
        return false;
    }
    dialog.lpstrFile[0] = L'\0';
    return ask(&dialog) != 0;
}

}  // namespace

std::optional<std::string> WindowsFileDialogs::ChooseFileToOpen(
    const ports::FileDialogRequest& request) {
    return Choose(request, Purpose::Open);
}

std::optional<std::string> WindowsFileDialogs::ChooseFileToSave(
    const ports::FileDialogRequest& request) {
    return Choose(request, Purpose::Save);
}

std::optional<std::string> WindowsFileDialogs::Choose(const ports::FileDialogRequest& request,
                                                      Purpose purpose) {
    const bool saves = purpose == Purpose::Save;
    const std::wstring extension = saves ? DefaultExtension(request.filter) : std::wstring();
    const std::wstring filter = PlatformFilter(request.filter);
    const std::wstring title = ToWide(request.title);
    std::vector<wchar_t> path(PathRoom, L'\0');
    const std::wstring start = ToWide(request.fileName);
    std::copy_n(start.begin(), std::min(start.size(), path.size() - 1), path.begin());
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = m_screen.ActiveWindow();
    dialog.lpstrFilter = filter.c_str();
    // Without one, the system says what the dialog is for.
    dialog.lpstrTitle = title.empty() ? nullptr : title.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | request.flags;
    const DisabledWindows others(dialog.hwndOwner);
    if (!Ask(dialog, saves)) {
        return std::nullopt;
    }
    return ToUtf8(path.data());
}

}  // namespace krv::windows
