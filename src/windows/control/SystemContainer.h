// SystemContainer: puts foreign controls on forms by means of the system's own control container,
// atl.dll, which is loaded with the first of them and stays.
#pragma once

#include "windows/forms/ForeignControlContainer.h"

namespace krv::windows {

class SystemContainer final : public ForeignControlContainer {
 public:
    // The suite's controls are given out by their ports, any other as a plain object.
    std::shared_ptr<ports::ForeignObject> CreateIn(
        HWND window, const forms::ForeignControl& placeholder) override;
};

}  // namespace krv::windows
