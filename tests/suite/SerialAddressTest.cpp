#include "suite/transport/SerialAddress.h"

#include <gtest/gtest.h>

#include <string>

#include "suite/transport/Transport.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace suite;

TEST(SerialAddress, NamesTheDeviceAndItsSettings) {
    const SerialAddress usual = ParseSerialAddress("COM3");
    EXPECT_EQ(usual.device, "COM3");
    EXPECT_EQ(usual.baudRate, 19200);
    EXPECT_EQ(usual.stopBits, StopBits::One);
    EXPECT_EQ(usual.parity, Parity::None);
    EXPECT_FALSE(usual.hardwareFlow);
    const SerialAddress full =
        ParseSerialAddress("/dev/ttyUSB0?baud=115200&data=8&stop=1.5&parity=even&flow=hardware");
    EXPECT_EQ(full.device, "/dev/ttyUSB0");
    EXPECT_EQ(full.baudRate, 115200);
    EXPECT_EQ(full.stopBits, StopBits::OneAndHalf);
    EXPECT_EQ(full.parity, Parity::Even);
    EXPECT_TRUE(full.hardwareFlow);
}

TEST(SerialAddress, SaysWhatIsWrongWithIt) {
    const std::string form =
        "; write serial://DEVICE, for example serial://COM3 or serial:///dev/ttyS0?baud=9600.";
    struct {
        const char* text;
        std::string what;
    } const cases[] = {
        {"", "it has no device"},
        {R"(\\server\share)", "its device is a path"},
        {"COM1?baud", "\"baud\" is no setting of a serial line"},
        {"COM1?baud=0", "\"baud=0\" is no setting of a serial line"},
        {"COM1?baud=99999999999", "\"baud=99999999999\" is no setting of a serial line"},
        {"COM1?baud=9600&data=7", "\"data=7\" is no setting of a serial line"},
        {"COM1?flow=xonxoff", "\"flow=xonxoff\" is no setting of a serial line"},
        {"COM1?&", "\"\" is no setting of a serial line"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(DescriptionOf([&] { return ParseSerialAddress(one.text); }),
                  "The address \"serial://" + std::string(one.text) +
                      "\" cannot be used: " + one.what + form);
    }
}

TEST(SerialAddress, LeadsToNoOtherComputer) {
    TransportRegistry registry;
    AddSerialTransport(registry);
    for (const std::string device : {"UNC/server/share", "unc/server/share?baud=9600", "a/COM1"}) {
        EXPECT_EQ(DescriptionOf([&] { return registry.Open("serial://" + device, {}); }),
                  "The address \"serial://" + device +
                      "\" cannot be used: its device is a path that may lead to another computer.");
    }
}

}  // namespace
}  // namespace krv::tests
