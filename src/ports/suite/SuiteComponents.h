// Creates the suite's components, which are known by ProgID alone.
#pragma once

#include <array>
#include <memory>

#include "ports/suite/IOSettings.h"
#include "ports/suite/KRVServer.h"
#include "ports/suite/ProgIds.h"
#include "ports/suite/StateInfo.h"
#include "ports/suite/VCUtilities.h"

namespace krv::ports {

// The components, as the about box lists them; the settings come with the discovery control.
inline constexpr std::array ComponentProgIds{ProgId::KRVServer,       ProgId::Discovery,
                                             ProgId::RS232Config,     ProgId::VCUtilities,
                                             ProgId::InstrumentState, ProgId::StateInfo};

// Each creates a new object and throws Error 429, with a description that names the component and
// what to do, when it isn't installed.
class SuiteComponents {
 public:
    virtual ~SuiteComponents() = default;
    virtual std::shared_ptr<KRVServer> CreateServer() = 0;
    virtual std::shared_ptr<IOSettings> CreateIOSettings() = 0;
    virtual std::shared_ptr<RS232Config> CreateRS232Config() = 0;
    virtual std::shared_ptr<VCUtilities> CreateUtilities() = 0;
    virtual std::shared_ptr<StateInfo> CreateStateInfo() = 0;
};

}  // namespace krv::ports
