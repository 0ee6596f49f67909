// The server fetches screen images from the simulated generator.
#include <gtest/gtest.h>

#include "suite/picture/BitmapFile.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/transport/TransportErrors.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

using ports::ImageFormat::ByExtension;
using ports::ImageFormat::Placement;

class ScreenImage : public ::testing::Test {
 protected:
    void SetUp() override { Connect("M7718C"); }
    void Connect(const std::string& model) {
        generator.emplace(simulator::GeneratorSettings{.model = model});
        TransportRegistry transports;
        AddTcpTransport(transports);
        // Drawing takes a while with sanitizers beside a load.
        const TimeOuts timeOuts{};
        server.emplace(transports, timeOuts);
        server->Connect(generator->Address());
        panel = transports.Open(generator->Address(), timeOuts);
    }
    // Another client sends something to the generator.
    void Say(const std::string& message) {
        const std::string line = message + ";:SYST:REM?\n";
        panel->Send(std::as_bytes(std::span(line)), suite::MessagePart::Last);
        std::array<std::byte, 100> reply{};
        static_cast<void>(panel->Receive(reply));
    }
    // The size of the image in a bitmap file; the start of any other file.
    std::string Save(const std::string& name, std::int32_t format = ByExtension) {
        server->SaveScreenImage(folder.PathOf(name), format);
        if (!name.ends_with(".bmp") || format != ByExtension) {
            return folder.Content(name).substr(0, 3);
        }
        const auto image = suite::picture::ParseBitmapFile(folder.Content(name));
        return std::to_string(image.width) + " by " + std::to_string(image.height);
    }

    TemporaryFolder folder;
    std::optional<RunningGenerator> generator;
    std::optional<ScpiInstrumentServer> server;
    std::unique_ptr<Transport> panel;
};

TEST_F(ScreenImage, IsCapturedOnRequestAndWrittenAsTheExtensionSays) {
    EXPECT_EQ(server->ModelName(), "M7718C");
    server->PrepareForCapture();
    EXPECT_EQ(Save("a.bmp"), "640 by 320");
    EXPECT_EQ(Save("a.gif"), "GIF");
    EXPECT_EQ(Save("a.jpg"), "\xFF\xD8\xFF");
    EXPECT_EQ(Save("a.wmf"), "\xD7\xCD\xC6");
    EXPECT_EQ(Save("a.emf"), std::string("\x01\0\0", 3));
    const std::string tiff = Save("a.TIFF");
    EXPECT_TRUE(tiff.starts_with("II*") || tiff.starts_with("MM")) << tiff;
    // Whatever the name says.
    EXPECT_EQ(Save("b.bmp", Placement), "\xD7\xCD\xC6");
    EXPECT_EQ(ErrorOf([&] { Save("c.bmp", 3); }), "5 There is no picture format 3.");
    EXPECT_FALSE(folder.Has("c.bmp"));
    // The next capture shows what has changed.
    const std::string before = folder.Content("a.bmp");
    Say("FREQ 2.5GHz");
    Save("a.bmp");
    EXPECT_NE(folder.Content("a.bmp"), before);
}

TEST_F(ScreenImage, OfAnOlderModelStaysUntilItIsFetched) {
    Connect("M771XB");
    const auto isThere = [&] { return server->Instrument()->FileExists("DISPLAY.BMP"); };
    Say("DIAG:KEY 'LOCAL';:DIAG:KEY 'TRIGGER'");
    server->PrepareForCapture();
    EXPECT_TRUE(isThere()) << "the user may still turn back";
    EXPECT_THROW(Save("missing/a.bmp"), Error);
    EXPECT_TRUE(isThere());
    EXPECT_EQ(Save("a.bmp"), "640 by 320");
    EXPECT_FALSE(isThere()) << "it would pass for the next one";
}

}  // namespace
}  // namespace krv::tests
