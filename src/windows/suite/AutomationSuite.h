// Creates the suite's components as this computer has them registered.
#pragma once

#include "ports/suite/SuiteComponents.h"

namespace krv::windows {

class AutomationSuite final : public ports::SuiteComponents {
 public:
    std::shared_ptr<ports::KRVServer> CreateServer() override;
    std::shared_ptr<ports::IOSettings> CreateIOSettings() override;
    std::shared_ptr<ports::RS232Config> CreateRS232Config() override;
    std::shared_ptr<ports::VCUtilities> CreateUtilities() override;
    std::shared_ptr<ports::StateInfo> CreateStateInfo() override;
};

}  // namespace krv::windows
