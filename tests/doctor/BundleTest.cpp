// What goes into the archive for the report of a fault.
#include <gtest/gtest.h>

#include "doctor/Discretion.h"

namespace krv::tests {
namespace {

TEST(DiscretionTest, LeavesOutFoldersAndSerialNumbersAndNothingElse) {
    struct Case {
        const char* text;
        const char* discreet;
    };
    for (const Case& each : {
             Case{"C:\\Users\\Jo Doe\\x64\\KRVControl.dll is gone", "...\\KRVControl.dll is gone"},
             {"copy C:\\a\\b.txt, D:\\c d\\e.txt", "copy ...\\b.txt, ...\\e.txt"},
             {"\\\\server\\share\\krv.exe", "...\\krv.exe"},
             {"Can't write /srv/jo/talk.txt: no room", "Can't write .../talk.txt: no room"},
             {"visa=/opt/jo/libvisa.so\naddress=10.0.0.1", "visa=.../libvisa.so\naddress=10.0.0.1"},
             {"visa://USB0::0x0957::0x1F01::MY44001122::INSTR",
              "visa://USB0::0x0957::0x1F01::(left out)::INSTR"},
             {"tcp://10.0.0.1:5025: M7718C answers, serial number US00000001",
              "tcp://10.0.0.1:5025: M7718C answers, serial number (left out)"},
             {"1/2 I and/or Q", "1/2 I and/or Q"},
         }) {
        EXPECT_EQ(doctor::WithoutPrivateParts(each.text, {"", "US00000001"}), each.discreet);
    }
}

}  // namespace
}  // namespace krv::tests
