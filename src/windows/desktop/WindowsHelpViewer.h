// HTML Help of Windows. Its library is loaded with the first help that is asked for, and stays.
#pragma once

#include "ports/desktop/HelpViewer.h"

namespace krv::windows {

class WindowsHelpViewer final : public desktop::HelpViewer {
 public:
    void ShowHelp(desktop::WindowHandle owner, const std::string& file,
                  desktop::HelpCommand command) override;
};

}  // namespace krv::windows
