// Creates the suite's components, which are known by ProgID alone.
#pragma once

#include <array>
#include <memory>

#include "ports/suite/IOSettings.h"
#include "ports/suite/KRVServer.h"
#include "ports/suite/StateInfo.h"
#include "ports/suite/VCUtilities.h"

namespace krv::ports {

namespace ProgId {
inline constexpr const char* KRVServer = "CvnKRVServer.CvnKRVServer";
inline constexpr const char* Discovery = "CvnDiscovery.CvnDiscoveryCtl";
inline constexpr const char* IOSettings = "CvnDiscovery.IOSettings";
inline constexpr const char* RS232Config = "CvnRS232.RS232Config";
inline constexpr const char* VCUtilities = "CvnInstrUtilities.VCUtilities";
inline constexpr const char* InstrumentState = "CvnInstrSetups.InstrumentState";
inline constexpr const char* StateInfo = "CvnInstrSetups.StateInfo";
}  // namespace ProgId

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
