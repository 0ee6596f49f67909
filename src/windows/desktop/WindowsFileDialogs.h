// The common open and save dialogs of Windows.
#pragma once

#include "ports/desktop/FileDialogs.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::windows {

class WindowsFileDialogs final : public ports::FileDialogs {
 public:
    explicit WindowsFileDialogs(const WindowsScreen& screen) : m_screen(screen) {}
    std::optional<std::string> ChooseFileToOpen(const ports::FileDialogRequest& request) override;
    std::optional<std::string> ChooseFileToSave(const ports::FileDialogRequest& request) override;

 private:
    enum class Purpose : std::uint8_t { Open, Save };
    std::optional<std::string> Choose(const ports::FileDialogRequest& request, Purpose purpose);

    const WindowsScreen& m_screen;
};

}  // namespace krv::windows
