// FakeHostedControl: the toolbar control as its host adapter sees it, with buttons of its own.
#pragma once

#include <memory>

#include "hosts/HostedControl.h"
#include "tests/support/FakeCommandBar.h"
#include "tests/support/FakeSuite.h"

namespace krv::tests {

// What every button shows while no instrument is connected.
inline constexpr const char* UnconnectedLook =
    "Corvane TQL/KRV on shown [About Corvane Tallyport for TQL/KRV]\n"
    "Connect on shown [Connect to TQL/KRV Signal Generator]\n"
    "Connected on hidden [Connect to TQL/KRV Signal Generator]\n"
    "Settings off shown [Capture/Restore Settings]\n"
    "PutData off shown [Download Arb Waveform Data]\n"
    "GetImage off shown [Get Screen Image]\n"
    "Help on shown [Help]\n";

class FakeHostedControl final : public hosts::HostedControl {
 public:
    // The log of the own buttons apart from everything else.
    FakeHostedControl(CallLog& log, CallLog& ownLog)
        : Bar(std::make_shared<FakeCommandBar>(ownLog)), m_surface(log) {}
    std::shared_ptr<FakeCommandBar> Bar;
    ports::ControlSurface& Surface() override { return m_surface; }
    std::shared_ptr<ports::CommandBar> OwnToolbar() override { return Bar; }

 private:
    FakeSurface m_surface;
};

}  // namespace krv::tests
