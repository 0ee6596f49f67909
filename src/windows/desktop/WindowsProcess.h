// This process as Windows knows it.
#pragma once

#include "ports/desktop/Process.h"

namespace krv::windows {

class WindowsProcess final : public ports::Process {
 public:
    std::uint32_t Id() override;
    // Empty for a folder whose name has more than 254 characters.
    std::string TemporaryFolder() override;
};

}  // namespace krv::windows
