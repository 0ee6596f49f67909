// Creates the suite's components as this computer has them registered.
#pragma once

#include "ports/suite/SuiteComponents.h"

namespace krv::windows {

class AutomationSuite final : public suite::SuiteComponents {
 public:
    std::shared_ptr<suite::KRVServer> CreateServer() override;
    std::shared_ptr<suite::IOSettings> CreateIOSettings() override;
    std::shared_ptr<suite::RS232Config> CreateRS232Config() override;
    std::shared_ptr<suite::VCUtilities> CreateUtilities() override;
    std::shared_ptr<suite::StateInfo> CreateStateInfo() override;
};

}  // namespace krv::windows
