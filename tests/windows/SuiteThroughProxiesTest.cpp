// The control's proxies on the suite's real components.
#include <fstream>
#include <string>
#include <vector>

#include "suite/windows/discovery/DiscoveryWindow.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/HostedControl.h"
#include "tests/windows/SuiteTest.h"
#include "windows/suite/AutomationDiscovery.h"
#include "windows/suite/AutomationServer.h"
#include "windows/suite/AutomationSettings.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using suite::DiscoveryWindow;

class SuiteThroughProxies : public SuiteTest {};

// What the connect dialog does with the connection's change.
class Dialog final : public ports::DiscoveryEvents {
 public:
    explicit Dialog(AutomationServer& server) : m_server(server) {}
    void OnConnectionChange() override {
        ++changes;
        m_server.SetInstrumentSession(nullptr);
    }
    int changes = 0;

 private:
    AutomationServer& m_server;
};

TEST_F(SuiteThroughProxies, ConnectDownloadAndReadTheErrors) {
    const TemporaryFolder folder;
    const RunningGenerator generator({.storeFolder = folder.Path()});
    AutomationServer server(Create(__uuidof(CvnKRVServer)));
    const auto settings = std::make_shared<AutomationIOSettings>(Create(__uuidof(::IOSettings)));
    for (const std::string& model : server.SupportedModels()) {
        settings->AddSupportedInstrument(model, model);
    }
    const auto serial = std::make_shared<AutomationRS232Config>(Create(__uuidof(RS232Config)));
    serial->SetBaudRate(19200);
    settings->AddInterfaceConfiguration(serial, "RS232");

    const LateBound control = Create(__uuidof(CvnDiscoveryCtl));
    AutomationDiscovery discovery(control);
    discovery.SetSettings(settings);
    Dialog dialog(server);
    {
        const auto subscription = discovery.ReceiveEvents(dialog);
        const HostedControl host(control.Object());
        host.Type(DiscoveryWindow::AddressBox, ToWide(generator.Address()).c_str());
        host.Click(DiscoveryWindow::ConnectButton);
    }
    EXPECT_EQ(dialog.changes, 1);

    const auto session = discovery.Settings()->IO();
    ASSERT_NE(session, nullptr);
    EXPECT_EQ(session->Address(), generator.Address());
    EXPECT_EQ(session->Serial(), nullptr);
    EXPECT_EQ(settings->HostName(), "My Computer");
    server.SetInstrumentSession(session);
    EXPECT_EQ(server.Model(), "M7718C");
    EXPECT_TRUE(server.Options()->ArbInstalled());
    EXPECT_EQ(server.InstalledOptions(), (std::vector<std::string>{"R2X"}));

    std::vector<std::int16_t> codes(200'000);
    for (std::size_t index = 0; index < codes.size(); ++index) {
        codes[index] = static_cast<std::int16_t>(index * 7);
    }
    server.Arb()->DownloadInterleaved("WAVE", codes, 0);
    std::ifstream stored(folder.Path() / "WAVE.iq.int16", std::ios::binary);
    std::vector<std::int16_t> received(codes.size());
    stored.read(reinterpret_cast<char*>(received.data()),
                static_cast<std::streamsize>(received.size() * sizeof(std::int16_t)));
    EXPECT_EQ(received, codes);

    server.Arb()->DownloadMarkers("MISSING", codes, 0);
    const auto instrument = server.Instrument();
    EXPECT_LT(instrument->ReadError().number, 0);
    EXPECT_EQ(instrument->ReadError().number, 0);
    instrument->IO()->ReturnToLocal();
}

}  // namespace
}  // namespace krv::tests
