// The platform's viewer for compiled help files.
#pragma once

#include <cstdint>
#include <string>

#include "ports/desktop/FormScreen.h"

namespace krv::ports {

// What the viewer is asked to show.
enum class HelpCommand : std::uint32_t { TableOfContents = 1 };

class HelpViewer {
 public:
    virtual ~HelpViewer() = default;
    // Opens the file in front of the owner and returns. A file that isn't there opens nothing;
    // throws Error when the platform has no viewer.
    virtual void ShowHelp(WindowHandle owner, const std::string& file, HelpCommand command) = 0;
    // The same, at a page of this path in the file; at the table of contents where the file hasn't
    // got the page or the viewer can't tell.
    virtual void ShowTopic(WindowHandle owner, const std::string& file,
                           const std::string& /*topic*/) {
        ShowHelp(owner, file, HelpCommand::TableOfContents);
    }
};

}  // namespace krv::ports
