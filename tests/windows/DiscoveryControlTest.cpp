#include <functional>
#include <memory>
#include <string>

#include "suite/windows/discovery/DiscoveryLayout.h"
#include "suite/windows/discovery/DiscoveryWindow.h"
#include "tests/support/RunningGenerator.h"
#include "tests/windows/HostedControl.h"
#include "tests/windows/SuiteTest.h"
#include "windows/automation/ComObject.h"
#include "windows/base/WideText.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using Microsoft::WRL::ComPtr;
using suite::DiscoveryWindow;

// Counts the control's events, and does what a receiver would.
class Receiver final : public ComObject<IDispatch> {
 public:
    int changes = 0;
    std::function<void()> onChange = [] {};

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        changes += id == 1 ? 1 : 0;
        onChange();
        return S_OK;
    }
};

class DiscoveryControl : public SuiteTest {
 protected:
    void SetUp() override {
        for (const wchar_t* model : {L"M7718C", L"M9920C"}) {
            settings.GetObject(L"SupportedInstruments").Call(L"Add", {model, model});
        }
        control.PutObject(L"IOSettings", settings.Object());
        const auto points = Query<IConnectionPointContainer>(control);
        ASSERT_EQ(points->FindConnectionPoint(__uuidof(DCvnDiscoveryEvents), &point), S_OK);
        ASSERT_EQ(point->Advise(receiver.Get(), &cookie), S_OK);
    }
    void TearDown() override {
        host.reset();
        point->Unadvise(cookie);
        point.Reset();
        receiver.Reset();
        control = settings = LateBound();
        SuiteTest::TearDown();
    }

    void Show() { host = std::make_unique<hosts::HostedControl>(control.Object()); }
    [[nodiscard]] std::string Status() const {
        return ToUtf8(host->Text(DiscoveryWindow::StatusLabel));
    }
    [[nodiscard]] bool IsEnabled(int id) const { return IsWindowEnabled(host->Child(id)) != 0; }
    [[nodiscard]] LateBound Session() const { return settings.GetObject(L"IO"); }

    LateBound control = Create(__uuidof(CvnDiscoveryCtl));
    LateBound settings = Create(__uuidof(IOSettings));
    ComPtr<Receiver> receiver = MakeCom<Receiver>();
    ComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
    std::unique_ptr<hosts::HostedControl> host;
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
    EXPECT_EQ(receiver->changes, 1);
    EXPECT_EQ(Status(), "Connected to M7718C at " + generator.Address() + ".");
    EXPECT_EQ(Session().GetText(L"Address"), generator.Address());
    EXPECT_EQ(settings.GetText(L"HostName"), "My Computer");

    host->Click(DiscoveryWindow::DisconnectButton);
    EXPECT_EQ(receiver->changes, 2);
    EXPECT_EQ(Status(), "Not connected.");
    EXPECT_FALSE(Session());
    EXPECT_FALSE(IsEnabled(DiscoveryWindow::DisconnectButton));
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
        const std::string failure = waveform::FailureOf([&] { control.Call(L"Connect"); });
        EXPECT_NE(failure.find(wrong), std::string::npos) << failure;
        EXPECT_NE(failure.find(Status()), std::string::npos) << failure;
        EXPECT_EQ(Session().Object(), first.Object());
        EXPECT_TRUE(IsEnabled(DiscoveryWindow::DisconnectButton));
    }
    EXPECT_EQ(receiver->changes, 1);

    control.Put(L"Address", ToWide(address).c_str());
    host->Click(DiscoveryWindow::ConnectButton);
    EXPECT_NE(Session().Object(), first.Object());
    EXPECT_EQ(waveform::FailureOf([&] { return first.Get(L"ConnectionKind"); }).substr(0, 11),
              "-2147221499");

    generator.reset();
    EXPECT_NE(waveform::FailureOf([&] { control.Call(L"Connect"); }), "");
    EXPECT_FALSE(Session());
    EXPECT_EQ(receiver->changes, 3);
}

TEST_F(DiscoveryControl, ListsWhatItFindsAndConnectsToTheChosenOne) {
    Show();
    const HWND list = host->Child(DiscoveryWindow::FoundList);
    const auto find = [&](const wchar_t* start) {
        return SendMessageW(list, LB_FINDSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(start));
    };
    ASSERT_TRUE(WaitUntil([&] { return find(L"sim://M9920C  (M9920C)") != LB_ERR; }));
    EXPECT_NE(find(L"sim://KRV-B  (KRV-B, not supported)"), LB_ERR);
    EXPECT_EQ(host->Text(DiscoveryWindow::FoundLabel), L"Instruments &found:");

    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(find(L"sim://M9920C")), 0);
    const auto notify = [&](WORD notification) {
        SendMessageW(host->Control(), WM_COMMAND,
                     MAKEWPARAM(DiscoveryWindow::FoundList, notification),
                     reinterpret_cast<LPARAM>(list));
    };
    notify(LBN_SELCHANGE);
    EXPECT_EQ(host->Text(DiscoveryWindow::AddressBox), L"sim://M9920C");
    EXPECT_EQ(receiver->changes, 0);
    notify(LBN_DBLCLK);
    EXPECT_EQ(Status(), "Connected to M9920C at sim://M9920C.");

    host->Click(DiscoveryWindow::SearchButton);
    host->Click(DiscoveryWindow::SearchButton);
    EXPECT_TRUE(WaitUntil(
        [&] { return host->Text(DiscoveryWindow::FoundLabel) == L"Instruments &found:"; }));
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

TEST_F(DiscoveryControl, HidesWhatItsPropertiesSay) {
    Show();
    const auto isVisible = [&](int id) { return IsWindowVisible(host->Child(id)) != 0; };
    for (const bool visible : {false, true}) {
        control.Put(L"connectbuttonsvisible", visible);
        EXPECT_EQ(isVisible(DiscoveryWindow::ConnectButton), visible);
        EXPECT_EQ(isVisible(DiscoveryWindow::DisconnectButton), visible);
        EXPECT_EQ(control.GetBool(L"ConnectButtonsVisible"), visible);
        control.Put(L"supportinstrumentslabelvisible", visible);
        EXPECT_EQ(isVisible(DiscoveryWindow::SupportedLabel), visible);
        EXPECT_EQ(control.GetBool(L"SupportInstrumentsLabelVisible"), visible);
    }
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
    EXPECT_EQ(receiver->changes, 1);
    EXPECT_TRUE(Session());
}

TEST_F(DiscoveryControl, SurvivesAReceiverThatLetsGoOfEverything) {
    Show();
    control.Put(L"Address", L"sim://M7718C");
    receiver->onChange = [this] {
        host.reset();
        control = settings = LateBound();
    };
    host->Click(DiscoveryWindow::ConnectButton);
    EXPECT_EQ(receiver->changes, 1);
    ComPtr<IConnectionPointContainer> container;
    EXPECT_EQ(point->GetConnectionPointContainer(&container), E_UNEXPECTED);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
}

TEST_F(DiscoveryControl, DescribesItselfToContainers) {
    const auto object = Query<IOleObject>(control);
    DWORD status = 0;
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_NE(status & OLEMISC_ACTIVATEWHENVISIBLE, 0U);
    SIZEL extent{};
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
    EXPECT_EQ(extent.cx, 12515);
    extent = {5000, 4000};
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    SIZEL viewExtent{};
    EXPECT_EQ(Query<IViewObject2>(control)->GetExtent(DVASPECT_CONTENT, -1, nullptr, &viewExtent),
              S_OK);
    EXPECT_EQ(viewExtent.cx, 5000);
    EXPECT_EQ(object->SetExtent(DVASPECT_ICON, &extent), DV_E_DVASPECT);
    EXPECT_EQ(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_UNEXPECTED);

    const auto information = Query<IProvideClassInfo2>(control);
    GUID events{};
    EXPECT_EQ(information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
    EXPECT_EQ(events, __uuidof(DCvnDiscoveryEvents));
    ComPtr<ITypeInfo> classInformation;
    EXPECT_EQ(information->GetClassInfo(&classInformation), S_OK);

    ComPtr<IUnknown> identity;
    control.Object()->QueryInterface(IID_IUnknown,
                                     reinterpret_cast<void**>(identity.GetAddressOf()));
    for (const IID& id : {IID_IOleWindow, IID_IViewObject, IID_IPersist, IID_IProvideClassInfo,
                          IID_IOleInPlaceActiveObject, IID_IPersistStorage, IID_IDispatch}) {
        ComPtr<IUnknown> found;
        ASSERT_EQ(
            control.Object()->QueryInterface(id, reinterpret_cast<void**>(found.GetAddressOf())),
            S_OK);
        ComPtr<IUnknown> same;
        found->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(same.GetAddressOf()));
        EXPECT_EQ(same.Get(), identity.Get());
    }
}

TEST_F(DiscoveryControl, IsSavedLoadedAndDrawnByTheSystem) {
    ComPtr<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    const auto persistence = Query<IPersistStreamInit>(control);
    EXPECT_EQ(persistence->IsDirty(), S_FALSE);
    EXPECT_EQ(persistence->Save(stream.Get(), TRUE), S_OK);
    EXPECT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
    EXPECT_EQ(persistence->Load(stream.Get()), S_OK);

    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 100, 50);
    const HGDIOBJ previous = SelectObject(memory, bitmap);
    const RECT bounds{10, 10, 90, 40};
    EXPECT_EQ(OleDraw(control.Object(), DVASPECT_CONTENT, memory, &bounds), S_OK);
    EXPECT_EQ(GetPixel(memory, 10, 10), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(GetPixel(memory, 5, 5), RGB(0, 0, 0));
    SelectObject(memory, previous);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

// A container's side as far as the utilities ask it: the site and the document around it.
class DocumentSite final : public ComObject<IOleClientSite, IOleContainer, IDispatch> {
 public:
    HRESULT STDMETHODCALLTYPE SaveObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        *container = this;
        AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EnumObjects(DWORD, IEnumUnknown**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockContainer(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }
};

TEST_F(DiscoveryControl, IsFoundInItsHostByTheUtilities) {
    const LateBound utilities = Create(__uuidof(VCUtilities));
    const auto document = [&] {
        return utilities.CallObject(L"ContainingDocument", {control.Object()});
    };
    EXPECT_EQ(waveform::FailureOf(document),
              "-2147221499 CvnInstrUtilities.VCUtilities: The control does not "
              "lie in a document.");
    EXPECT_EQ(waveform::FailureOf([&] { utilities.Call(L"TopLevelWindow", {control.Object()}); }),
              "-2147221499 CvnInstrUtilities.VCUtilities: The control does not lie in a window.");
    const auto site = MakeCom<DocumentSite>();
    const auto object = Query<IOleObject>(control);
    object->SetClientSite(site.Get());
    EXPECT_EQ(document().Object(), static_cast<IDispatch*>(site.Get()));
    object->SetClientSite(nullptr);

    Show();
    EXPECT_EQ(static_cast<long>(utilities.Call(L"TopLevelWindow", {control.Object()})),
              HandleToLong(host->Frame()));
}

}  // namespace
}  // namespace krv::tests
