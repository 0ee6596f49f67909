// The platform's clipboard.
#pragma once

#include <string>

namespace krv::ports {

class Clipboard {
 public:
    virtual ~Clipboard() = default;
    // Replaces what is there. Throws Error while another program keeps the clipboard.
    virtual void SetText(const std::string& text) = 0;
};

}  // namespace krv::ports
