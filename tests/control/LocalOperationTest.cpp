// After each command of the toolbar the instrument's front panel works again: another client of the
// simulated generator asks it over TCP.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <thread>

#include "control/frmConnect.h"
#include "settings/FrmSetup.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "tests/control/ControlTest.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::tests {
namespace {

using namespace suite;

constexpr TimeOuts Patience{std::chrono::seconds(20), std::chrono::seconds(20)};

// The toolbar's server over the real one.
class ToolbarServer final : public ports::KRVServer, public ports::InstrumentOptions {
 public:
    std::string Model() override { return m_server.ModelName(); }
    std::shared_ptr<ports::InstrumentOptions> Options() override {
        return {std::shared_ptr<void>(), this};
    }
    bool ArbInstalled() override { return true; }
    std::vector<std::string> SupportedModels() override { return {}; }
    void SetInstrumentSession(const std::shared_ptr<ports::IoSession>& session) override {
        m_server.Adopt(std::dynamic_pointer_cast<ScpiInstrument>(session));
    }
    std::shared_ptr<ports::ConnectedInstrument> Instrument() override {
        return m_server.Instrument();
    }
    std::shared_ptr<ports::ArbWaveform> Arb() override { return m_server.Arb(); }
    std::vector<std::string> InstalledOptions() override { return m_server.InstalledOptions(); }
    void PrepareForCapture() override { m_server.PrepareForCapture(); }
    std::string ModelName() override { return m_server.ModelName(); }
    void SaveScreenImage(const std::string& file, std::int32_t format) override {
        m_server.SaveScreenImage(file, format);
    }

 private:
    ScpiInstrumentServer m_server{TransportRegistry()};
};

class LocalOperation : public ControlTest {
 protected:
    LocalOperation() {
        AddTcpTransport(transports);
        suite.OtherServer = server;
        panel = transports.Open(generator.Address(), Patience);
        AttachHost();
    }

    // What SYST:REM? says once the command is over; the user of the dialog that it shows does this.
    std::string After(const std::function<void()>& command, std::function<void()> user = {}) {
        if (user) {
            desk.Screen.Then(std::move(user));
        }
        command();
        EXPECT_TRUE(desk.Screen.ScriptIsDone());
        // The command's last message may still be on its way.
        const std::string query = "SYST:REM?\n";
        std::string reply;
        const auto hasCome = [&] {
            return reply == "0\n" && generator.Device().BytesTakenIn() > asked;
        };
        for (int turn = 0; !hasCome() && turn < 100; ++turn) {
            std::this_thread::sleep_for(std::chrono::milliseconds(turn));
            reply = AskPanel(query);
            asked += query.size();
        }
        EXPECT_GT(generator.Device().BytesTakenIn(), asked) << "the command asked nothing";
        asked = generator.Device().BytesTakenIn();
        return reply;
    }
    std::string AskPanel(const std::string& query) {
        panel->Send(std::as_bytes(std::span(query)), suite::MessagePart::Last);
        std::array<char, 100> reply{};
        return {reply.data(), panel->Receive(std::as_writable_bytes(std::span(reply)))};
    }
    void Connect() {
        const auto instrument = OpenInstrument(transports, generator.Address(), Patience);
        suite.LastSettings->Chosen = instrument;
        desk.Screen.Click(dynamic_cast<control::frmConnect&>(*desk.Screen.LastShown).cmdClose);
    }
    void CloseSetup() {
        desk.Screen.Click(dynamic_cast<settings::FrmSetup&>(*desk.Screen.LastShown).cmdClose);
    }
    // The box that ends a run.
    std::string Download(const std::string& name, bool onlyValidates = false) {
        form->TextIFileName.Text = "wave.txt";
        form->checkAutoName.Value = false;
        form->TextDestinationName.Text = name;
        Boxes();
        desk.Screen.Click(onlyValidates ? form->CommandValidate : form->cmdDownload);
        return Boxes();
    }

    RunningGenerator generator;
    TransportRegistry transports;
    std::shared_ptr<ToolbarServer> server = std::make_shared<ToolbarServer>();
    std::unique_ptr<Transport> panel;
    std::uint64_t asked = 0;
    waveform::frmDataTransfer* form = nullptr;
    TemporaryFolder folder;
};

TEST_F(LocalOperation, ComesBackAfterEveryCommandOfTheToolbar) {
    EXPECT_EQ(After([&] { control->DoConnect(); }, [&] { Connect(); }), "0\n");
    const auto setUp = [&] { control->DoSetup(); };
    Value snapshot;
    EXPECT_EQ(After(setUp,
                    [&] {
                        snapshot = control->SetupValue();
                        CloseSetup();
                    }),
              "0\n");
    EXPECT_EQ(After([&] { control->SetSetupValue(snapshot); }), "0\n") << "with the dialog open";
    EXPECT_EQ(After(setUp,
                    [&] {
                        static_cast<void>(server->Instrument()->ReadError());
                        log.FailAt = "enable";
                        CloseSetup();
                    }),
              "0\n");
    log.FailAt.clear();

    std::string ramp;
    for (int point = 0; point < 200; ++point) {
        ramp += std::to_string(point) + '\n';
    }
    desk.Files.Put("wave.txt", ramp);
    control->DoDataTransfer(EmptyValue{}, std::int16_t{0});
    form = &dynamic_cast<waveform::frmDataTransfer&>(*desk.Screen.LastShown);
    EXPECT_EQ(After([&] { EXPECT_NE(Download("W").find("complete"), std::string::npos); }), "0\n");
    EXPECT_EQ(After([&] { EXPECT_NE(Download("").find("must be entered"), std::string::npos); }),
              "0\n");
    EXPECT_EQ(After([&] { EXPECT_NE(Download("", true), ""); }), "0\n");

    adapters.OnPicture = [&] { server->SaveScreenImage(folder.PathOf("a.bmp"), 100); };
    EXPECT_EQ(After([&] { control->DoSaveScreenImage(); }), "0\n");
    adapters.OnPicture = [&] { server->SaveScreenImage(folder.PathOf("none/a.bmp"), 100); };
    EXPECT_EQ(After([&] { control->DoSaveScreenImage(); }), "0\n");
}

}  // namespace
}  // namespace krv::tests
