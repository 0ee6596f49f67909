// Takes files of Windows away.
#pragma once

#include "ports/desktop/FileRemoval.h"

namespace krv::windows {

class WindowsFileRemoval final : public ports::FileRemoval {
 public:
    void ClearAttributes(const std::string& path) override;
    void Delete(const std::string& path) override;
};

}  // namespace krv::windows
