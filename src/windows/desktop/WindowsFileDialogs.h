// The common open dialog of Windows.
#pragma once

#include "ports/desktop/FileDialogs.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::windows {

class WindowsFileDialogs final : public desktop::FileDialogs {
 public:
    explicit WindowsFileDialogs(const WindowsScreen& screen) : m_screen(screen) {}
    std::optional<std::string> ChooseFileToOpen(const desktop::FileDialogRequest& request) override;

 private:
    const WindowsScreen& m_screen;
};

}  // namespace krv::windows
