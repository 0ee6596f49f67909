// SetupInterface: what the suite's state control asks of the toolbar control: what the instrument
// is, a snapshot of its state, and to put one back. Each operation goes to the instrument that is
// connected at the time.
#pragma once

#include <memory>
#include <string>

#include "common/Value.h"
#include "ports/desktop/ControlSurface.h"

namespace krv::ports {

// A file of the maker's older bench software. No object is ever made: such files aren't supported.
class LegacyFileInfo;

class SetupInterface {
 public:
    virtual ~SetupInterface() = default;
    virtual std::string Model() = 0;
    // A snapshot of the instrument's state, which only SetSetupValue reads. Throws the server's
    // Error.
    virtual Value SetupValue() = 0;
    // Puts a snapshot back. A failure is shown to the user and not thrown.
    virtual void SetSetupValue(const Value& snapshot) = 0;
    // The instrument's firmware revision.
    virtual std::string Version() = 0;
    // Always null.
    virtual std::shared_ptr<LegacyFileInfo> GetLegacyVantorFileInfo(const std::string& first,
                                                                    const std::string& second) = 0;
    // The control as its container sees it.
    virtual ports::ControlSurface& Surface() = 0;
};

}  // namespace krv::ports
