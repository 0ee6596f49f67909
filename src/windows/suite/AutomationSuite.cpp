#include "windows/suite/AutomationSuite.h"

#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"
#include "windows/suite/AutomationServer.h"
#include "windows/suite/AutomationSettings.h"
#include "windows/suite/AutomationStates.h"
#include "windows/suite/AutomationUtilities.h"

namespace krv::windows {
namespace {

LateBound Create(const char* progId) {
    return LateBound::Create(ToWide(progId).c_str());
}

}  // namespace

std::shared_ptr<ports::KRVServer> AutomationSuite::CreateServer() {
    return std::make_shared<AutomationServer>(Create(ports::ProgId::KRVServer));
}

std::shared_ptr<ports::IOSettings> AutomationSuite::CreateIOSettings() {
    return std::make_shared<AutomationIOSettings>(Create(ports::ProgId::IOSettings));
}

std::shared_ptr<ports::RS232Config> AutomationSuite::CreateRS232Config() {
    return std::make_shared<AutomationRS232Config>(Create(ports::ProgId::RS232Config));
}

std::shared_ptr<ports::VCUtilities> AutomationSuite::CreateUtilities() {
    return std::make_shared<AutomationUtilities>(Create(ports::ProgId::VCUtilities));
}

std::shared_ptr<ports::StateInfo> AutomationSuite::CreateStateInfo() {
    return std::make_shared<AutomationStateInfo>(Create(ports::ProgId::StateInfo));
}

}  // namespace krv::windows
