// HTML Help of Windows. Its library is loaded with the first help that is asked for, and stays.
#pragma once

#include <string>

#include "ports/desktop/HelpViewer.h"

namespace krv::windows {

class WindowsHelpViewer final : public ports::HelpViewer {
 public:
    void ShowHelp(ports::WindowHandle owner, const std::string& file,
                  ports::HelpCommand command) override;
    void ShowTopic(ports::WindowHandle owner, const std::string& file,
                   const std::string& topic) override;
};

}  // namespace krv::windows
