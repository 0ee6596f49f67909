// What KRVSuite.dll is made of.
#include <windows.h>
// After windows.h, which it needs.
#include <KRVSuite.h>
#include <olectl.h>

#include <algorithm>
#include <array>

#include "simulator/server/SimulatedTransport.h"
#include "suite/transport/visa/VisaTransport.h"
#include "suite/windows/Transports.h"
#include "suite/windows/discovery/DiscoveryObject.h"
#include "suite/windows/discovery/Settings.h"
#include "suite/windows/server/ServerObject.h"
#include "suite/windows/states/InstrumentStateControl.h"
#include "suite/windows/states/StateInfoObject.h"
#include "windows/com/ComModule.h"

namespace {

IUnknown* NewDiscoveryControl();
IUnknown* NewInstrumentState();

constexpr DWORD ControlStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                OLEMISC_SETCLIENTSITEFIRST;

const std::array Classes{
    krv::windows::ComClass{__uuidof(CvnKRVServer), krv::suite::ProgId::KRVServer,
                           L"Tallyport KRV Instrument Server", krv::suite::NewKRVServer},
    krv::windows::ComClass{__uuidof(IOSettings), krv::suite::ProgId::IOSettings,
                           L"Tallyport Connection Settings", krv::suite::NewIOSettings},
    krv::windows::ComClass{__uuidof(RS232Config), krv::suite::ProgId::RS232Config,
                           L"Tallyport Serial Configuration", krv::suite::NewRS232Config},
    krv::windows::ComClass{__uuidof(VCUtilities), krv::suite::ProgId::VCUtilities,
                           L"Tallyport Instrument Utilities", krv::suite::NewVCUtilities},
    krv::windows::ComClass{__uuidof(CvnDiscoveryCtl), krv::suite::ProgId::Discovery,
                           L"Tallyport Instrument Discovery", NewDiscoveryControl, ControlStatus},
    krv::windows::ComClass{__uuidof(StateInfo), krv::suite::ProgId::StateInfo,
                           L"Tallyport Instrument State List", krv::suite::NewStateInfo},
    krv::windows::ComClass{__uuidof(InstrumentState), krv::suite::ProgId::InstrumentState,
                           L"Tallyport Instrument State", NewInstrumentState, ControlStatus}};

// The description of a control's class.
const krv::windows::ComClass& DescriptionOf(const CLSID& id) {
    return *std::find_if(Classes.begin(), Classes.end(),
                         [&](const auto& description) { return description.id == id; });
}

IUnknown* NewDiscoveryControl() {
    auto control = krv::windows::MakeCom<krv::suite::DiscoveryObject>(
        DescriptionOf(__uuidof(CvnDiscoveryCtl)));
    return static_cast<ICvnDiscoveryCtl*>(control.Detach());
}

IUnknown* NewInstrumentState() {
    auto control = krv::windows::MakeCom<krv::suite::InstrumentStateControl>(
        DescriptionOf(__uuidof(InstrumentState)));
    return static_cast<ICvnInstrumentState*>(control.Detach());
}

krv::suite::TransportRegistry MakeTransports() {
    krv::suite::TransportRegistry transports;
    krv::suite::AddTcpTransport(transports);
    krv::suite::AddSerialTransport(transports);
    krv::suite::AddVisaTransport(transports);
    krv::simulator::AddSimulatedTransport(transports);
    return transports;
}

}  // namespace

namespace krv {

const windows::ComModule& windows::ThisComModule() {
    static const ComModule module{"KRVSuite", Classes};
    return module;
}

const suite::TransportRegistry& suite::KnownTransports() {
    static const suite::TransportRegistry transports = MakeTransports();
    return transports;
}

}  // namespace krv
