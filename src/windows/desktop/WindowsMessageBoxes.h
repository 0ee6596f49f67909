// Message boxes of Windows, owned by the window that is in front.
#pragma once

#include "ports/desktop/MessageBoxes.h"
#include "windows/forms/WindowsScreen.h"

namespace krv::windows {

class WindowsMessageBoxes final : public ports::MessageBoxes {
 public:
    explicit WindowsMessageBoxes(const WindowsScreen& screen) : m_screen(screen) {}
    ports::MessageAnswer Show(const ports::Message& message) override;

 private:
    const WindowsScreen& m_screen;
};

}  // namespace krv::windows
