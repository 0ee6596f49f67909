// krv image: the instrument's display as a picture file.
#include <array>
#include <atomic>
#include <thread>

#include "suite/transport/Transport.h"
#include "tests/cli/CommandLineFixture.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace cli;
using ImageTest = CommandLineTest;

// Presses the keys at the generator's front panel that capture its screen.
void CaptureByHand(const std::string& address) {
    suite::TransportRegistry transports;
    suite::AddTcpTransport(transports);
    const auto panel = transports.Open(address, {});
    const std::string keys = "DIAG:KEY \"LOCAL\";KEY \"TRIGGER\";:SYST:REM?\n";
    panel->Send(std::as_bytes(std::span(keys)));
    std::array<std::byte, 16> reply{};
    static_cast<void>(panel->Receive(reply));
}

TEST_F(ImageTest, IsWrittenAsTheFilesEndingSays) {
    for (const auto& [name, start] : {std::pair("a.bmp", "BM"), std::pair("a.TIF", "II*")}) {
        ASSERT_EQ(Run({"image", Path(name), "--address", "sim://M7718C"}), 0) << Err;
        EXPECT_EQ(Out, "Screen image written to " + Path(name) + '\n');
        EXPECT_EQ(Err, "");
        EXPECT_TRUE(Content(name).starts_with(start)) << name;
    }
}

TEST_F(ImageTest, OfAnOlderModelIsTheOneThatItsUserCaptures) {
    simulator::GeneratorSettings settings;
    settings.model = "M771XB";
    const RunningGenerator generator(settings);
    const std::vector<std::string> command{"image", Path("a.gif"), "--address",
                                           generator.Address()};
    // No person is there to capture it; then one is, but doesn't.
    EXPECT_EQ(Run(command), 130);
    EXPECT_NE(Err.find("2. Press the \"Trigger\" key on the KRV"), std::string::npos) << Err;
    EXPECT_EQ(RunAtTerminal(command, "y\ny\nn\n"), 130);
    EXPECT_NE(Err.find("Bitmap not found in instrument"), std::string::npos) << Err;
    // --yes doesn't wait for a capture that isn't there.
    std::vector<std::string> unasked = command;
    unasked.emplace_back("--yes");
    EXPECT_EQ(Run(unasked), 130);
    EXPECT_FALSE(Exists("a.gif"));
    // The user presses the keys at last, while the questions go on.
    std::atomic<bool> done = false;
    std::thread user([&] {
        while (!done) {
            CaptureByHand(generator.Address());
        }
    });
    std::string answers;
    for (int question = 0; question < 20000; ++question) {
        answers += "y\n";
    }
    EXPECT_EQ(RunAtTerminal(command, answers), 0);
    done = true;
    user.join();
    EXPECT_EQ(Content("a.gif").substr(0, 3), "GIF");
}

TEST_F(ImageTest, LeavesNoFileWhenItFails) {
    EXPECT_EQ(Run({"image", Path("missing/a.gif"), "--address", "sim://M7718C"}), 1);
    EXPECT_NE(Err.find("missing/a.gif\" cannot be written"), std::string::npos) << Err;
    EXPECT_EQ(Run({"image", Path("a.gif"), "--address", "tcp://127.0.0.1:1"}), 1);
    EXPECT_EQ(Run({"image", Path("a.png"), "--address", "sim://M7718C"}), 2);
    EXPECT_FALSE(Exists("a.gif"));
    EXPECT_FALSE(Exists("a.png"));
}

}  // namespace
}  // namespace krv::tests
