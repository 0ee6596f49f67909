#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "suite/discovery/Announcement.h"
#include "suite/windows/discovery/DiscoveryLayout.h"
#include "suite/windows/discovery/DiscoveryWindow.h"
#include "suite/windows/discovery/FoundListBox.h"
#include "tests/support/RunningGenerator.h"
#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/ScriptedObject.h"
#include "tests/windows/support/SuiteTest.h"
#include "tests/windows/support/TestContainer.h"
#include "windows/automation/EventSubscription.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/WideText.h"

namespace krv::tests {
namespace {

using suite::DiscoveryWindow;
using windows::LateBound;
using windows::ToUtf8;
using windows::ToWide;

class DiscoveryControl : public SuiteTest {
 protected:
    DiscoveryControl() {
        for (const wchar_t* model : {L"M7718C", L"M9920C"}) {
            settings.GetObject(L"SupportedInstruments").Call(L"Add", {model, model});
        }
        control.PutObject(L"IOSettings", settings.Object());
        subscription = windows::SubscribeToEvents(control.Object(), __uuidof(DCvnDiscoveryEvents),
                                                  [this](DISPID, const DISPPARAMS&) {
                                                      ++changes;
                                                      onChange();
                                                  });
    }
    void TearDown() override {
        LetGo();
        subscription.reset();
        SuiteTest::TearDown();
    }

    void LetGo() {
        host.reset();
        control = settings = LateBound();
    }
    void Show() { host = std::make_unique<AtlContainer>(control.Object()); }
    // The place in the list of the entry that begins so, or LB_ERR.
    [[nodiscard]] LRESULT Find(const char* start) const {
        return SendMessageW(host->Child(DiscoveryWindow::FoundList), LB_FINDSTRING,
                            static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(ToWide(start).c_str()));
    }
    [[nodiscard]] std::string FoundLabel() const {
        return ToUtf8(host->Text(DiscoveryWindow::FoundLabel));
    }
    [[nodiscard]] std::string Status() const {
        return ToUtf8(host->Text(DiscoveryWindow::StatusLabel));
    }
    [[nodiscard]] bool IsEnabled(int id) const { return IsWindowEnabled(host->Child(id)) != 0; }
    [[nodiscard]] LateBound Session() const { return settings.GetObject(L"IO"); }

    LateBound control = Create(__uuidof(CvnDiscoveryCtl));
    LateBound settings = Create(__uuidof(IOSettings));
    int changes = 0;
    std::function<void()> onChange = [] {};
    std::unique_ptr<Subscription> subscription;
    std::unique_ptr<AtlContainer> host;
};

TEST_F(DiscoveryControl, ConnectsAndDisconnectsByItsButtons) {
    const RunningGenerator generator;
    Show();
    EXPECT_EQ(host->Text(DiscoveryWindow::SupportedLabel),
              L"Supported instruments: M7718C, M9920C");
    EXPECT_EQ(Status(), "Not connected.");
    EXPECT_FALSE(IsEnabled(DiscoveryWindow::ConnectButton));
    EXPECT_FALSE(IsEnabled(DiscoveryWindow::DisconnectButton));

    host->Type(DiscoveryWindow::AddressBox, ToWide(' ' + generator.Address()).c_str());
    EXPECT_TRUE(IsEnabled(DiscoveryWindow::ConnectButton));
    host->Click(DiscoveryWindow::ConnectButton);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Status(), "Connected to M7718C at " + generator.Address() + ".");
    EXPECT_EQ(Session().GetText(L"Address"), generator.Address());
    EXPECT_EQ(settings.GetText(L"HostName"), "My Computer");

    host->Click(DiscoveryWindow::DisconnectButton);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(Status(), "Not connected.");
    EXPECT_FALSE(Session());
    EXPECT_FALSE(IsEnabled(DiscoveryWindow::DisconnectButton));
}

TEST_F(DiscoveryControl, HasRoomForWhatIsToBeDoneWhenAConnectionFails) {
    Show();
    host->Type(DiscoveryWindow::AddressBox, L"USB0::0x1AB1::0x0641::DG1ZA192300000::INSTR");
    host->Click(DiscoveryWindow::ConnectButton);
    const std::string status = Status();
    EXPECT_NE(status.find("Install"), std::string::npos) << status;
    const HWND label = host->Child(DiscoveryWindow::StatusLabel);
    const windows::WindowContext context(label);
    const windows::SelectedObject font(
        context.Get(), reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)));
    RECT room{};
    GetClientRect(label, &room);
    RECT taken = room;
    DrawTextW(context.Get(), ToWide(status).c_str(), -1, &taken,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    EXPECT_LE(taken.bottom, room.bottom) << status;
}

TEST_F(DiscoveryControl, KeepsAnEarlierSessionWhenAnotherAddressFails) {
    auto generator = std::make_unique<RunningGenerator>();
    const std::string address = generator->Address();
    Show();
    control.Put(L"Address", ToWide(address).c_str());
    control.Call(L"Connect");
    const LateBound first = Session();
    for (const char* wrong : {"tcp://127.0.0.1", "gpib://7", "sim://M0"}) {
        control.Put(L"Address", ToWide(wrong).c_str());
        const std::string failure = ErrorOf([&] { control.Call(L"Connect"); });
        EXPECT_NE(failure.find(wrong), std::string::npos) << failure;
        EXPECT_NE(failure.find(Status()), std::string::npos) << failure;
        EXPECT_EQ(Session().Object(), first.Object());
        EXPECT_TRUE(IsEnabled(DiscoveryWindow::DisconnectButton));
    }
    EXPECT_EQ(changes, 1);

    control.Put(L"Address", ToWide(address).c_str());
    host->Click(DiscoveryWindow::ConnectButton);
    EXPECT_NE(Session().Object(), first.Object());
    EXPECT_EQ(ErrorOf([&] { return first.Get(L"ConnectionKind"); }).substr(0, 11), "-2147221499");

    generator.reset();
    EXPECT_NE(ErrorOf([&] { control.Call(L"Connect"); }), "none");
    EXPECT_FALSE(Session());
    EXPECT_EQ(changes, 3);
}

// Presses Esc when the generator, which doesn't answer any more, has been asked something.
std::thread EscapeWhenAsked(const RunningGenerator& generator) {
    generator.Device().ActiveFaults().Switch("never-answer");
    return std::thread([&generator, before = generator.Device().BytesTakenIn()] {
        while (generator.Device().BytesTakenIn() == before) {
            Sleep(10);
        }
        keybd_event(VK_ESCAPE, 0, 0, 0);
        keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
    });
}

TEST_F(DiscoveryControl, EndsAnAttemptToConnectAtTheEscapeKey) {
    const RunningGenerator generator;
    Show();
    SetForegroundWindow(host->Frame());
    host->Type(DiscoveryWindow::AddressBox, ToWide(generator.Address()).c_str());
    std::thread user = EscapeWhenAsked(generator);
    host->Click(DiscoveryWindow::ConnectButton);
    user.join();
    EXPECT_EQ(Status(), "Connecting to " + generator.Address() + " was cancelled.");
    EXPECT_FALSE(Session());
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE))
        << "the dialog would close";

    generator.Device().ActiveFaults().Clear();
    host->Click(DiscoveryWindow::ConnectButton);
    const LateBound server = Create(__uuidof(CvnKRVServer));
    server.GetObject(L"Instrument").PutObject(L"IO", Session().Object());
    user = EscapeWhenAsked(generator);
    EXPECT_EQ(DescriptionOf([&] { server.GetObject(L"Instrument").Call(L"CaptureState"); }),
              "The capture of the state was cancelled.");
    user.join();
}

TEST_F(DiscoveryControl, ListsWhatItFindsAndConnectsToTheChosenOne) {
    Show();
    const HWND list = host->Child(DiscoveryWindow::FoundList);
    ASSERT_TRUE(WaitUntil([&] { return Find("sim://M9920C  (M9920C)") != LB_ERR; }));
    ASSERT_TRUE(WaitUntil([&] { return FoundLabel() == "Instruments &found:"; }));
    EXPECT_NE(Find("sim://KRV-B  (KRV-B, not supported)"), LB_ERR);

    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(Find("sim://M9920C")), 0);
    const auto notify = [&](WORD notification) {
        SendMessageW(host->Control(), WM_COMMAND,
                     MAKEWPARAM(DiscoveryWindow::FoundList, notification),
                     reinterpret_cast<LPARAM>(list));
    };
    notify(LBN_SELCHANGE);
    EXPECT_EQ(host->Text(DiscoveryWindow::AddressBox), L"sim://M9920C");
    EXPECT_EQ(changes, 0);
    notify(LBN_DBLCLK);
    EXPECT_EQ(Status(), "Connected to M9920C at sim://M9920C.");

    host->Click(DiscoveryWindow::SearchButton);
    host->Click(DiscoveryWindow::SearchButton);
    EXPECT_TRUE(WaitUntil([&] { return FoundLabel() == "Instruments &found:"; }));
}

TEST_F(DiscoveryControl, ListsEachInstrumentAtOnceAndLeavesTheUsersChoiceAlone) {
    Show();
    const HWND list = host->Child(DiscoveryWindow::FoundList);
    ASSERT_TRUE(WaitUntil([&] { return Find("sim://M9920C") != LB_ERR; }));
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(Find("sim://M9920C")), 0);
    host->Type(DiscoveryWindow::AddressBox, L"tcp://ben");
    std::string address;
    bool isAtOnce = false;
    // While another doesn't answer. The machine may be slow for a moment.
    for (int times = 0; times < 10 && !isAtOnce; ++times) {
        const RunningGenerator silent({.faults = {"never-answer"}});
        const RunningGenerator generator;
        const suite::Announcement signs[] = {suite::Announcement(silent.Port()),
                                             suite::Announcement(generator.Port())};
        address = generator.Address();
        host->Click(DiscoveryWindow::SearchButton);
        ASSERT_TRUE(WaitUntil([&] { return Find(address.c_str()) != LB_ERR; }));
        isAtOnce = FoundLabel() == "Looking for instruments...";
        EXPECT_LT(Find(address.c_str()), Find("sim://M9920C"));
    }
    EXPECT_TRUE(isAtOnce);
    host->Click(DiscoveryWindow::SearchButton);
    EXPECT_NE(Find(address.c_str()), LB_ERR) << "nobody knows yet that it is gone";
    EXPECT_TRUE(WaitUntil([&] { return Find(address.c_str()) == LB_ERR; }));
    EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), Find("sim://M9920C"));
    EXPECT_EQ(host->Text(DiscoveryWindow::AddressBox), L"tcp://ben");
}

TEST(FoundListBox, KeepsWhatIsSelectedAndWhatIsOnTopWhileLinesComeAndGo) {
    const HWND window = CreateWindowExW(0, L"LISTBOX", L"", WS_POPUP | WS_VSCROLL | WS_HSCROLL, 0,
                                        0, 100, 40, nullptr, nullptr, nullptr, nullptr);
    suite::FoundListBox box(window);
    const auto show = [&](std::string_view addresses) {
        std::vector<suite::FoundListBox::Line> lines;
        for (const char each : addresses) {
            lines.push_back({std::string(1, each), std::wstring(100, static_cast<wchar_t>(each))});
        }
        box.Show(lines);
        std::string shown;
        for (LRESULT at = 0; at < SendMessageW(window, LB_GETCOUNT, 0, 0); ++at) {
            wchar_t text[200] = L"";
            SendMessageW(window, LB_GETTEXT, static_cast<WPARAM>(at),
                         reinterpret_cast<LPARAM>(text));
            shown += static_cast<char>(text[0]);
        }
        EXPECT_EQ(shown, addresses);
        return SendMessageW(window, LB_GETTOPINDEX, 0, 0);
    };
    EXPECT_EQ(show("bdfhjlnprt"), 0);
    EXPECT_GT(SendMessageW(window, LB_GETHORIZONTALEXTENT, 0, 0), 100);
    SendMessageW(window, LB_SETCURSEL, 0, 0);
    EXPECT_EQ(show("abdfhjlnprt"), 0) << "the beginning stays in sight";
    EXPECT_EQ(box.SelectedAddress(), "b");
    SendMessageW(window, LB_SETCURSEL, 3, 0);
    SendMessageW(window, LB_SETTOPINDEX, 5, 0);
    EXPECT_EQ(show("acdefghjlnprt"), 7);
    EXPECT_EQ(box.SelectedAddress(), "f");
    show("acdegh");
    EXPECT_EQ(box.SelectedAddress(), "");
    EXPECT_EQ(show(""), 0);
    DestroyWindow(window);
}

TEST_F(DiscoveryControl, NeverWaitsForASearch) {
    const RunningGenerator silent({.faults = {"never-answer"}});
    const suite::Announcement sign(silent.Port());
    Show();
    // The quickest of some: the machine may be slow for a moment.
    ULONGLONG quickest = 1000;
    for (int times = 0; times < 4; ++times) {
        const auto before = silent.Device().BytesTakenIn();
        host->Click(DiscoveryWindow::SearchButton);
        ASSERT_TRUE(WaitUntil([&] { return silent.Device().BytesTakenIn() > before; }));
        const ULONGLONG start = GetTickCount64();
        host->Click(DiscoveryWindow::SearchButton);
        quickest = std::min(quickest, GetTickCount64() - start);
    }
    EXPECT_LT(quickest, 200U);
}

// A serial port of this computer for one test.
class SerialPort {
 public:
    SerialPort() {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, Key, L"KRVTests", REG_SZ, L"COM77",
                        6 * sizeof(wchar_t));
    }
    SerialPort(const SerialPort&) = delete;
    SerialPort& operator=(const SerialPort&) = delete;
    ~SerialPort() { RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, Key, L"KRVTests"); }

 private:
    static constexpr const wchar_t* Key = L"HARDWARE\\DEVICEMAP\\SERIALCOMM";
};

TEST_F(DiscoveryControl, LooksOnceItIsSeenAndForWhatItsSettingsAskFor) {
    const SerialPort port;
    const LateBound line = Create(__uuidof(RS232Config));
    line.Put(L"BaudRate", 38400L);
    line.Put(L"Handshake", 3L);
    settings.GetObject(L"InterfaceConfigurations").Call(L"Add", {line.Object(), L"RS232"});
    settings.Put(L"InstrumentType", L"Signal Generator");
    control.PutObject(L"IOSettings", settings.Object());
    host = std::make_unique<AtlContainer>(control.Object(), 0);
    EXPECT_EQ(FoundLabel(), "Instruments &found:") << "a form that is only loaded asks nobody";
    ShowWindow(host->Frame(), SW_SHOWNORMAL);
    ASSERT_TRUE(WaitUntil([&] { return Find("sim://M7718C") != LB_ERR; }));
    ASSERT_TRUE(WaitUntil([&] { return FoundLabel() == "Instruments &found:"; }));
    EXPECT_NE(Find("serial://COM77?baud=38400&data=8&flow=hardware  (serial line)"), LB_ERR);

    control.PutObject(L"IOSettings", settings.Object());
    EXPECT_EQ(FoundLabel(), "Instruments &found:");
    settings.Put(L"HostName", L"127.0.0.2");
    control.PutObject(L"IOSettings", settings.Object());
    EXPECT_EQ(FoundLabel(), "Looking for instruments...");
    settings.Put(L"InstrumentType", L"Power Meter");
    control.PutObject(L"IOSettings", settings.Object());
    EXPECT_TRUE(WaitUntil([&] {
        return FoundLabel() == "There are no instruments of the type \"Power Meter\" here.";
    }));
    EXPECT_EQ(Find(""), LB_ERR);
}

TEST_F(DiscoveryControl, ShowsTheSessionThatItsSettingsBring) {
    const RunningGenerator generator;
    const LateBound session = OpenSession(generator.Address());
    settings.PutObject(L"IO", session.Object());
    Show();
    EXPECT_EQ(Status(), "Connected to M7718C at " + generator.Address() + ".");
    EXPECT_EQ(ToUtf8(host->Text(DiscoveryWindow::AddressBox)), generator.Address());
    EXPECT_EQ(control.GetObject(L"IOSettings").Object(), settings.Object());
    control.PutObject(L"IOSettings", nullptr);
    EXPECT_EQ(Status(), "Not connected.");
    EXPECT_NE(control.GetObject(L"IOSettings").Object(), settings.Object());
}

TEST_F(DiscoveryControl, LaysItsChildrenOutWithoutOverlapAtEveryResolution) {
    for (const int dotsPerInch : {96, 120, 144, 192}) {
        const SIZE size{MulDiv(DiscoveryWindow::NaturalSize.cx, dotsPerInch, 96),
                        MulDiv(DiscoveryWindow::NaturalSize.cy, dotsPerInch, 96)};
        const suite::DiscoveryLayout layout(size, dotsPerInch, true, true);
        for (int one = DiscoveryWindow::SupportedLabel; one <= DiscoveryWindow::StatusLabel;
             ++one) {
            const RECT place = layout.PlaceOf(one);
            EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= size.cx &&
                        place.bottom <= size.cy && IsRectEmpty(&place) == 0)
                << one << " at " << dotsPerInch;
            for (int other = one + 1; other <= DiscoveryWindow::StatusLabel; ++other) {
                const RECT beside = layout.PlaceOf(other);
                RECT common{};
                EXPECT_EQ(IntersectRect(&common, &place, &beside), 0) << one << " and " << other;
            }
        }
    }
}

TEST_F(DiscoveryControl, TakesReturnAndTabInsideItself) {
    const RunningGenerator generator;
    Show();
    const auto active = Query<IOleInPlaceActiveObject>(control);
    const auto press = [&](WPARAM key) {
        MSG message{};
        message.hwnd = GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        return active->TranslateAccelerator(&message);
    };
    SetForegroundWindow(host->Frame());
    SetFocus(host->Child(DiscoveryWindow::FoundList));
    for (const int next : {DiscoveryWindow::SearchButton, DiscoveryWindow::AddressBox}) {
        EXPECT_EQ(press(VK_TAB), S_OK);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), next);
    }
    EXPECT_NE(press(VK_TAB), S_OK) << "the last one leads out of the control";
    EXPECT_NE(press('A'), S_OK);
    host->Type(DiscoveryWindow::AddressBox, ToWide(generator.Address()).c_str());
    EXPECT_EQ(press(VK_RETURN), S_OK);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(Session());
}

TEST_F(DiscoveryControl, SurvivesAReceiverThatLetsGoOfEverything) {
    Show();
    control.Put(L"Address", L"sim://M7718C");
    onChange = [this] { LetGo(); };
    host->Click(DiscoveryWindow::ConnectButton);
    EXPECT_EQ(changes, 1);
}

TEST_F(DiscoveryControl, IsFoundInItsHostByTheUtilities) {
    const LateBound utilities = Create(__uuidof(VCUtilities));
    const auto document = [&] {
        return utilities.CallObject(L"ContainingDocument", {control.Object()});
    };
    EXPECT_EQ(
        ErrorOf(document),
        "-2147221499 The control does not lie in a document. (CvnInstrUtilities.VCUtilities)");
    EXPECT_EQ(ErrorOf([&] { utilities.Call(L"TopLevelWindow", {control.Object()}); }),
              "-2147221499 The control does not lie in a window. (CvnInstrUtilities.VCUtilities)");
    {
        const auto letter = NewScripted();
        const TestContainer container(control.Object(), letter.Get());
        EXPECT_EQ(document().Object(), static_cast<IDispatch*>(letter.Get()));
    }
    Show();
    EXPECT_EQ(static_cast<long>(utilities.Call(L"TopLevelWindow", {control.Object()})),
              HandleToLong(host->Frame()));
}

}  // namespace
}  // namespace krv::tests
