#include "windows/suite/AutomationSuite.h"

#include "windows/automation/LateBound.h"
#include "windows/suite/AutomationServer.h"
#include "windows/suite/AutomationSettings.h"
#include "windows/suite/AutomationStates.h"
#include "windows/suite/AutomationUtilities.h"
#include "windows/text/WideText.h"

namespace krv::windows {
namespace {

LateBound Create(const char* progId) {
    return LateBound::Create(ToWide(progId).c_str());
}

}  // namespace

std::shared_ptr<suite::KRVServer> AutomationSuite::CreateServer() {
    return std::make_shared<AutomationServer>(Create(suite::ProgId::KRVServer));
}

std::shared_ptr<suite::IOSettings> AutomationSuite::CreateIOSettings() {
    return std::make_shared<AutomationIOSettings>(Create(suite::ProgId::IOSettings));
}

std::shared_ptr<suite::RS232Config> AutomationSuite::CreateRS232Config() {
    return std::make_shared<AutomationRS232Config>(Create(suite::ProgId::RS232Config));
}

std::shared_ptr<suite::VCUtilities> AutomationSuite::CreateUtilities() {
    return std::make_shared<AutomationUtilities>(Create(suite::ProgId::VCUtilities));
}

std::shared_ptr<suite::StateInfo> AutomationSuite::CreateStateInfo() {
    return std::make_shared<AutomationStateInfo>(Create(suite::ProgId::StateInfo));
}

}  // namespace krv::windows
