// What KRVSuite.dll is made of.
#include <windows.h>
// After windows.h, which it needs.
#include <KRVSuite.h>
#include <olectl.h>

#include <array>

#include "bench/instrument/GeneratorServer.h"
#include "suite/windows/Transports.h"
#include "suite/windows/discovery/DiscoveryControl.h"
#include "suite/windows/discovery/Settings.h"
#include "suite/windows/server/KRVServer.h"
#include "windows/com/ComModule.h"

namespace {

IUnknown* NewDiscoveryControl();

constexpr DWORD ControlStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                OLEMISC_SETCLIENTSITEFIRST;

const std::array Classes{
    krv::windows::ComClass{__uuidof(CvnKRVServer), L"CvnKRVServer.CvnKRVServer",
                           L"Tallyport KRV Instrument Server", krv::suitecom::NewKRVServer},
    krv::windows::ComClass{__uuidof(IOSettings), L"CvnDiscovery.IOSettings",
                           L"Tallyport Connection Settings", krv::suitecom::NewIOSettings},
    krv::windows::ComClass{__uuidof(RS232Config), L"CvnRS232.RS232Config",
                           L"Tallyport Serial Configuration", krv::suitecom::NewRS232Config},
    krv::windows::ComClass{__uuidof(VCUtilities), L"CvnInstrUtilities.VCUtilities",
                           L"Tallyport Instrument Utilities", krv::suitecom::NewVCUtilities},
    krv::windows::ComClass{__uuidof(CvnDiscoveryCtl), L"CvnDiscovery.CvnDiscoveryCtl",
                           L"Tallyport Instrument Discovery", NewDiscoveryControl, ControlStatus}};

IUnknown* NewDiscoveryControl() {
    auto control = krv::windows::MakeCom<krv::suitecom::DiscoveryControl>(Classes.back());
    return static_cast<ICvnDiscoveryCtl*>(control.Detach());
}

krv::server::TransportRegistry MakeTransports() {
    krv::server::TransportRegistry transports;
    krv::server::AddTcpTransport(transports);
    krv::server::AddSerialTransport(transports);
    krv::bench::AddSimulatedTransport(transports);
    return transports;
}

}  // namespace

namespace krv {

const windows::ComModule& windows::ThisComModule() {
    static const ComModule module{"KRVSuite", Classes};
    return module;
}

const server::TransportRegistry& suitecom::KnownTransports() {
    static const server::TransportRegistry transports = MakeTransports();
    return transports;
}

}  // namespace krv
