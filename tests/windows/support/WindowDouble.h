// A window of a bench program that only notes what it was asked.
#pragma once

#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::tests {

class WindowDouble final : public bench::ProgramWindow {
 public:
    [[nodiscard]] bool IsEditing() const override { return isEditing; }
    void Quit() override { hasQuit = true; }

    bool isEditing = false;
    bool hasQuit = false;
};

}  // namespace krv::tests
