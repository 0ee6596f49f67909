// The clipboard of Windows.
#pragma once

#include "ports/desktop/Clipboard.h"

namespace krv::windows {

class WindowsClipboard final : public ports::Clipboard {
 public:
    void SetText(const std::string& text) override;
};

}  // namespace krv::windows
