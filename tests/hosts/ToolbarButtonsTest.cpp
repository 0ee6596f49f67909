#include "hosts/ToolbarButtons.h"

#include <gtest/gtest.h>

#include "tests/support/FakeCommandBar.h"
#include "tests/support/FakeHostedControl.h"

namespace krv::tests {
namespace {

using namespace hosts;

TEST(ToolbarButtons, StandInTheirInitialStateByPosition) {
    CallLog log;
    FakeCommandBar bar(log);
    hosts::ApplyInitialState(bar);
    EXPECT_EQ(bar.State(), UnconnectedLook);
}

TEST(ToolbarButtons, StopAtTheHostsFirstRefusal) {
    CallLog log;
    FakeCommandBar bar(log);
    log.FailAt = "PutData disable";
    EXPECT_THROW(hosts::ApplyInitialState(bar), Error);
    EXPECT_EQ(bar.State(),
              "Corvane TQL/KRV on shown [About Corvane Tallyport for TQL/KRV]\n"
              "Connect on shown [Connect to TQL/KRV Signal Generator]\n"
              "Connected on hidden [Connect to TQL/KRV Signal Generator]\n"
              "Settings off shown [Capture/Restore Settings]\n"
              "PutData on shown []\nGetImage on shown []\nHelp on shown []\n");
}

struct Decision {
    int line;
    std::int16_t type;
    const char* model;
    bool arbInstalled;
    const char* expected;
};

TEST(ToolbarButtons, FollowTheDecisionTable) {
    constexpr const char* serialLimited =
        "Model; PutData disable; PutData tip Download Arb Waveform not supported over RS-232; "
        "GetImage enable; Settings enable";
    constexpr const char* serialC =
        "Model; PutData disable; PutData tip Download Arb Waveform not supported over RS-232; "
        "GetImage disable; GetImage tip Get Image from M7718C not supported over RS-232; "
        "Settings disable; "
        "Settings tip Capture/Restore Settings of M7718C not supported over RS-232";
    constexpr const char* serialTQL =
        "PutData disable; PutData tip Download Arb Waveform to TQL not supported over RS-232; "
        "GetImage disable; GetImage tip Get Image from TQL not supported over RS-232; "
        "Settings disable; "
        "Settings tip Capture/Restore Settings of TQL not supported over RS-232";
    constexpr const char* full =
        "Model; ArbInstalled; PutData enable; PutData tip Download Arb Waveform Data; "
        "GetImage enable; Settings enable";
    constexpr const char* noDualArb =
        "Model; ArbInstalled; PutData disable; "
        "PutData tip Option R2X (Dual Arbitrary Waveform Generator) is not installed.; "
        "GetImage enable; Settings enable";
    constexpr const char* noBaseband =
        "Model; ArbInstalled; PutData disable; PutData tip Baseband Generator Option is not "
        "installed.; "
        "GetImage enable; Settings enable";
    constexpr const char* neither = "Model; GetImage enable; Settings enable";
    const Decision decisions[] = {
        {__LINE__, 1, "M7718B", true, serialLimited},
        {__LINE__, 1, "M7718", false, serialLimited},
        {__LINE__, 1, "M7718c", true, serialLimited},
        {__LINE__, 1, "M7718C", true, serialC},
        {__LINE__, 1, "CORE", false, serialC},
        {__LINE__, 2, "M9920D", true, serialTQL},
        {__LINE__, 2, "", true, serialTQL},
        {__LINE__, 3, "M7718B", true, full},
        {__LINE__, 3, "M7718B", false, noDualArb},
        {__LINE__, 3, "M7718CB", false, noDualArb},
        {__LINE__, 3, "B7718C", false, noDualArb},
        {__LINE__, 3, "M7718C", true, full},
        {__LINE__, 3, "M9920DC", false, noBaseband},
        {__LINE__, 3, "M9920D", true, full},
        {__LINE__, 3, "M9920D", false, noBaseband},
        {__LINE__, 3, "M7718A", true, neither},
        {__LINE__, 3, "bcd", true, neither},
        {__LINE__, 0, "M7718C", true, ""},
        {__LINE__, 4, "M7718C", true, ""},
        {__LINE__, -1, "M7718C", true, ""},
    };
    for (const Decision& decision : decisions) {
        CallLog log;
        FakeCommandBar bar(log);
        hosts::ApplyChanges(bar, hosts::DecideButtons(
                                     decision.type,
                                     [&] {
                                         log.Note("Model");
                                         return decision.model;
                                     },
                                     [&] {
                                         log.Note("ArbInstalled");
                                         return decision.arbInstalled;
                                     }));
        EXPECT_EQ(log.Take(), decision.expected) << "line " << decision.line;
    }
}

TEST(ToolbarButtons, NameTheComputerOnlyWhenItIsAnother) {
    const std::string local = "Connected to M7718C Signal Generator at GPIB0::19";
    EXPECT_EQ(hosts::ConnectedToolTip("M7718C", "GPIB0::19", "My Computer"), local);
    EXPECT_EQ(hosts::ConnectedToolTip("M7718C", "GPIB0::19", "my computer"),
              local + " on my computer");
    EXPECT_EQ(hosts::ConnectedToolTip("M7718C", "GPIB0::19", ""), local + " on ");
}

}  // namespace
}  // namespace krv::tests
