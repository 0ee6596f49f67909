// The common open and save dialogs of Windows.
#pragma once

#include "ports/desktop/FileDialogs.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::windows {

class WindowsFileDialogs final : public desktop::FileDialogs {
 public:
    explicit WindowsFileDialogs(const WindowsScreen& screen) : m_screen(screen) {}
    std::optional<std::string> ChooseFileToOpen(const desktop::FileDialogRequest& request) override;
    std::optional<std::string> ChooseFileToSave(const desktop::FileDialogRequest& request) override;

 private:
    enum class Purpose : std::uint8_t { Open, Save };
    std::optional<std::string> Choose(const desktop::FileDialogRequest& request, Purpose purpose);

    const WindowsScreen& m_screen;
};

}  // namespace krv::windows
