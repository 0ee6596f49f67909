#include "suite/transport/ResourceName.h"

#include <gtest/gtest.h>

#include <string>

#include "suite/scpi/ScpiInstrument.h"
#include "suite/transport/LocalDevice.h"
#include "suite/transport/Transport.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace suite;

TEST(ResourceName, LeadsToAnAddressThatNeedsNoLibraryWhereThereIsOne) {
    struct {
        const char* name;
        std::string address;
    } const cases[] = {
        {"TCPIP0::bench7::5025::SOCKET", "tcp://bench7:5025"},
        {" tcpip::[fe80::1]::5025::socket ", "tcp://[fe80::1]:5025"},
        {"ASRL3::INSTR", "serial://" + SerialDevice(3) + "?baud=9600"},
        {"asrl3?baud=115200", "serial://" + SerialDevice(3) + "?baud=9600&baud=115200"},
        {"ASRL/dev/ttyUSB0::INSTR", "serial:///dev/ttyUSB0?baud=9600"},
        {"GPIB0::19::INSTR", "visa://GPIB0::19::INSTR"},
        {"gpib::19::30", "visa://gpib::19::30"},
        {"USB0::0x1AB1::0x0641::SN::0::INSTR", "visa://USB0::0x1AB1::0x0641::SN::0::INSTR"},
        {"TCPIP0::bench7::inst0::INSTR", "visa://TCPIP0::bench7::inst0::INSTR"},
        {"TCPIP::bench7::hislip0,4880", "visa://TCPIP::bench7::hislip0,4880"},
    };
    for (const auto& one : cases) {
        EXPECT_TRUE(IsResourceName(one.name)) << one.name;
        EXPECT_EQ(AddressOfResource(one.name), one.address);
    }
    for (const char* other : {"bench7", "gpib-gateway", "usb1:5025", "::1", "tcp://GPIB0::19:1",
                              "visa://GPIB0::19::INSTR", "GPIB0", "asrl-box", ""}) {
        EXPECT_FALSE(IsResourceName(other)) << other;
    }
}

TEST(ResourceName, SaysWhatIsWrongWithIt) {
    for (const char* name :
         {"GPIB0::31", "GPIB0::x", "GPIB0::1::2::3", "GPIBx::1", "GPIB0::", "USB0::1::2",
          "USB0::1::2::3::RAW", "TCPIP0::h::p::SOCKET", "TCPIP0::::inst0", "ASRL::INSTR",
          "ASRL0::INSTR", "ASRL99999::INSTR", "GPIB0::19::INSTR?baud=9600"}) {
        EXPECT_NE(DescriptionOf([&] {
                      return AddressOfResource(name);
                  }).find("it is no complete name of a resource; write GPIB0::19::INSTR, "),
                  std::string::npos)
            << name;
    }
    EXPECT_EQ(DescriptionOf([] { return AddressOfResource("TCPIP::h::5025"); }),
              "The address \"TCPIP::h::5025\" cannot be used: a port takes ::SOCKET behind it; "
              "write TCPIP0::h::5025::SOCKET.");
}

TEST(ResourceName, OfADocumentNamesNoOtherDeviceOfThisComputer) {
    const TransportRegistry none;
    for (const char* address :
         {"ASRL/dev/sda::INSTR", "visa://asrl/dev/sda::INSTR", "visa://ASRL/dev/sda",
          "visa://ASRL\\\\server\\share", "visa://x"}) {
        EXPECT_NE(DescriptionOf([&] {
                      return ReopenInstrument(none, address);
                  }).find("a document may name a "),
                  std::string::npos)
            << address;
    }
    EXPECT_NE(DescriptionOf([&] {
                  return ReopenInstrument(none, "visa://GPIB0::19");
              }).find("its scheme is not known"),
              std::string::npos);
}

}  // namespace
}  // namespace krv::tests
