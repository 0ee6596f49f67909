// The about box as the control asks for it.
#pragma once

#include <string>
#include <vector>

namespace krv::about {

// The about box, shown modal.
class AboutBox {
 public:
    virtual ~AboutBox() = default;
    // Lists the suite's components by ProgID.
    virtual void ShowAbout(const std::vector<std::string>& components) = 0;
};

}  // namespace krv::about
