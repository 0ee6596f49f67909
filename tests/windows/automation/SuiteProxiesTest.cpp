// The suite's objects as scripted automation objects, and what the ports make of them.
#include <memory>
#include <optional>

#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ScriptedObject.h"
#include "windows/automation/VariantValue.h"
#include "windows/suite/AutomationDiscovery.h"
#include "windows/suite/AutomationServer.h"
#include "windows/suite/AutomationSettings.h"
#include "windows/suite/AutomationSuite.h"
#include "windows/suite/AutomationUtilities.h"
#include "windows/suite/SessionInterfaces.h"

namespace krv::tests {
namespace {

using windows::LateBound;

constexpr IID ForeignEventsId{
    0x0d3c1f7a, 0x51b2, 0x4c66, {0x9e, 0x10, 0x2b, 0x7a, 0x44, 0xd1, 0x90, 0x3f}};
const _variant_t Nothing(static_cast<IDispatch*>(nullptr));

class SerialLine final : public windows::ComObject<windows::ICvnSerialSession> {
 public:
    HRESULT STDMETHODCALLTYPE get_BaudRate(long* value) override { return Give(value, 19200); }
    HRESULT STDMETHODCALLTYPE get_DataBits(long* value) override { return Give(value, 8); }
    HRESULT STDMETHODCALLTYPE get_StopBits(long*) override { return E_ABORT; }

 private:
    static HRESULT Give(long* value, long given) {
        *value = given;
        return S_OK;
    }
};

class GpibBus final : public windows::ComObject<windows::ICvnGpibSession> {
 public:
    int Returns = 0;
    HRESULT STDMETHODCALLTYPE ReturnToLocal() override {
        ++Returns;
        return S_OK;
    }
};

class SuiteProxiesTest : public AutomationTest {
 protected:
    const ScriptedPointer m_session =
        NewScripted({{L"Address", L"tcp://10.0.0.7:5025"}, {L"ConnectionKind", L"LAN"}});
    const ScriptedPointer m_instrument = NewScripted({{L"IO", ObjectVariant(m_session)}});
    const ScriptedPointer m_arb = NewScripted();
    const ScriptedPointer m_serverObject =
        NewScripted({{L"Instrument", ObjectVariant(m_instrument)}, {L"Arb", ObjectVariant(m_arb)}});
    windows::AutomationServer m_server{LateBound(static_cast<IDispatch*>(m_serverObject.Get()))};
};

TEST_F(SuiteProxiesTest, ErrorsOfTheQueueComeWithTheirMessage) {
    m_instrument->Members[L"ReadError"] = [](const ScriptedCall& call) {
        const VARIANT& message = call.Arguments.at(0);
        *V_VARIANTREF(&message) = _variant_t(L"Undefined header").Detach();
        return _variant_t(-113L);
    };
    const auto error = m_server.Instrument()->ReadError();
    EXPECT_EQ(error.number, -113);
    EXPECT_EQ(error.message, "Undefined header");
    m_instrument->Members[L"ReadError"] = [](const ScriptedCall&) -> _variant_t {
        throw HostException{E_FAIL, L"The instrument doesn't answer.", L"CvnKRVServer"};
    };
    EXPECT_EQ(ErrorOf([&] { m_server.Instrument()->ReadError(); }),
              "-2147467259 The instrument doesn't answer. (CvnKRVServer)");
}

TEST_F(SuiteProxiesTest, CodesGoOutWithoutACopyAndStayTheCallers) {
    struct Seen {
        const void* data;
        std::vector<std::int16_t> codes;
        LONG lowerBound;
    };
    std::vector<Seen> seen;
    std::string name;
    const auto receive = [&](const ScriptedCall& call) {
        name = windows::TextOf(call.Arguments.front());
        EXPECT_EQ(V_I4(&call.Arguments.back()), 0);
        for (std::size_t i = 1; i + 1 < call.Arguments.size(); ++i) {
            EXPECT_EQ(V_VT(&call.Arguments[i]), VT_BYREF | VT_ARRAY | VT_I2);
            SAFEARRAY** const array = V_ARRAYREF(&call.Arguments[i]);
            Seen one{(*array)->pvData, {}, 0};
            SafeArrayGetLBound(*array, 1, &one.lowerBound);
            LONG last = 0;
            SafeArrayGetUBound(*array, 1, &last);
            for (LONG index = one.lowerBound; index <= last; ++index) {
                std::int16_t code = 0;
                EXPECT_EQ(SafeArrayGetElement(*array, &index, &code), S_OK);
                one.codes.push_back(code);
            }
            seen.push_back(one);
            EXPECT_EQ(SafeArrayDestroy(*array), DISP_E_ARRAYISLOCKED);
            SAFEARRAYBOUND larger{1000, 1};
            EXPECT_NE(SafeArrayRedim(*array, &larger), S_OK);
        }
        return _variant_t();
    };
    for (const wchar_t* method : {L"DownloadIQ", L"DownloadInterleaved", L"DownloadMarkers"}) {
        m_arb->Members[method] = receive;
    }
    const std::vector<std::int16_t> i{-32768, 0, 32767};
    const std::vector<std::int16_t> q{1, 2, 3};
    const auto arb = m_server.Arb();
    arb->DownloadIQ("SINE\xC3\x84", i, q, 0);
    arb->DownloadIQ("SINE", i, {}, 0);
    arb->DownloadInterleaved("SINE", q, 0);
    arb->DownloadMarkers("SINE", i, 0);
    ASSERT_EQ(seen.size(), 6U);
    const std::vector<std::int16_t> none;
    const std::vector<std::int16_t>* const sent[] = {&i, &q, &i, &none, &q, &i};
    for (std::size_t index = 0; index < seen.size(); ++index) {
        EXPECT_EQ(seen[index].codes, *sent[index]) << index;
        EXPECT_EQ(seen[index].lowerBound, 1) << index;
        EXPECT_EQ(seen[index].data, sent[index]->data()) << index;
    }
    EXPECT_EQ(i, (std::vector<std::int16_t>{-32768, 0, 32767}));
    EXPECT_EQ(name, "SINE");
}

TEST_F(SuiteProxiesTest, ASessionTellsWhatItIsByItsInterfaces) {
    const auto session = m_server.Instrument()->IO();
    EXPECT_EQ(session->Serial(), nullptr);
    EXPECT_EQ(ErrorOf([&] { session->ReturnToLocal(); }).substr(0, 4), "445 ");
    EXPECT_TRUE(session->IsAlive());
    m_session->Members[L"ConnectionKind"] = [](const ScriptedCall&) -> _variant_t {
        throw HostException{E_FAIL, L"The connection was lost.", L"Session"};
    };
    EXPECT_FALSE(session->IsAlive());

    const auto bus = windows::MakeCom<GpibBus>();
    m_session->Answer(__uuidof(windows::ICvnSerialSession), windows::MakeCom<SerialLine>().Get());
    m_session->Answer(__uuidof(windows::ICvnGpibSession), bus.Get());
    session->ReturnToLocal();
    EXPECT_EQ(bus->Returns, 1);
    ports::SerialSession* const serial = session->Serial();
    ASSERT_NE(serial, nullptr);
    EXPECT_EQ(serial->BaudRate(), 19200);
    EXPECT_EQ(serial->DataBits(), 8);
    EXPECT_EQ(ErrorOf([&] { (void)serial->StopBits(); }).substr(0, 12), "-2147467260 ");
}

TEST_F(SuiteProxiesTest, ASessionOfAnotherSuiteTellsItByName) {
    int returns = 0;
    m_session->Members[L"ReturnToLocal"] = [&](const ScriptedCall&) {
        ++returns;
        return _variant_t();
    };
    const auto session = m_server.Instrument()->IO();
    session->ReturnToLocal();
    EXPECT_EQ(returns, 1);
    m_session->Members[L"BaudRate"] = [](const ScriptedCall&) -> _variant_t {
        throw HostException{E_NOTIMPL, L"", L""};
    };
    EXPECT_EQ(session->Serial(), nullptr) << "no line, no rate";
    m_session->Members.erase(L"BaudRate");
    m_session->Properties[L"BaudRate"] = 9600L;
    ASSERT_NE(session->Serial(), nullptr);
    EXPECT_EQ(session->Serial()->BaudRate(), 9600);
}

TEST_F(SuiteProxiesTest, AStateGoesBackAsItCame) {
    const _variant_t state(9007199254740993LL);
    m_instrument->Members[L"CaptureState"] = [&](const ScriptedCall&) { return state; };
    _variant_t restored;
    m_instrument->Members[L"RestoreState"] = [&](const ScriptedCall& call) {
        restored = call.Arguments.at(0);
        return _variant_t();
    };
    m_server.Instrument()->RestoreState(m_server.Instrument()->CaptureState());
    EXPECT_EQ(restored, state);
}

// A session from elsewhere, which no component of the suite could use.
class ForeignSession final : public ports::IoSession {
 public:
    std::string Address() override { return {}; }
    bool IsAlive() override { return true; }
    std::string ConnectionKind() override { return {}; }
    ports::SerialSession* Serial() override { return nullptr; }
    void ReturnToLocal() override {}
};

TEST_F(SuiteProxiesTest, SessionsAreHandedOnAsTheObjectsThatTheyAre) {
    const ScriptedPointer settingsObject = NewScripted({{L"IO", Nothing}});
    windows::AutomationIOSettings settings{
        LateBound(static_cast<IDispatch*>(settingsObject.Get()))};
    EXPECT_FALSE(settings.IO());
    settings.SetIO(m_server.Instrument()->IO());
    EXPECT_EQ(V_DISPATCH(&settingsObject->Properties[L"IO"]), m_session.Get());

    std::optional<WORD> flags;
    m_instrument->Members[L"IO"] = [&](const ScriptedCall& call) {
        flags = call.Flags;
        m_instrument->Properties[L"IO"] = call.Arguments.at(0);
        return _variant_t();
    };
    m_server.SetInstrumentSession(nullptr);
    EXPECT_EQ(flags, WORD{DISPATCH_PROPERTYPUTREF});
    EXPECT_EQ(m_instrument->Properties[L"IO"], Nothing);
    m_server.SetInstrumentSession(settings.IO());
    EXPECT_EQ(V_DISPATCH(&m_instrument->Properties[L"IO"]), m_session.Get());
    EXPECT_EQ(ErrorOf([&] { m_server.SetInstrumentSession(std::make_shared<ForeignSession>()); }),
              "13 Type mismatch");
}

class ChangeCount final : public ports::DiscoveryEvents {
 public:
    int Changes = 0;
    void OnConnectionChange() override { ++Changes; }
};

TEST_F(SuiteProxiesTest, TheDiscoveryControlSharesSettingsAndTellsChanges) {
    const ScriptedPointer control = NewScripted({{L"IOSettings", Nothing}});
    control->Events = {
        0x52e1a9c4, 0x3f27, 0x4d0b, {0x8a, 0x55, 0x6b, 0x8f, 0x0f, 0x3c, 0x11, 0xe0}};
    windows::AutomationDiscovery discovery{LateBound(static_cast<IDispatch*>(control.Get()))};
    EXPECT_EQ(ErrorOf([&] { (void)discovery.Settings(); }).substr(0, 3), "91 ");
    const ScriptedPointer settings = NewScripted({{L"HostName", L"Lab"}});
    discovery.SetSettings(std::make_shared<windows::AutomationIOSettings>(
        LateBound(static_cast<IDispatch*>(settings.Get()))));
    EXPECT_EQ(discovery.Settings()->HostName(), "Lab");

    ChangeCount count;
    auto subscription = discovery.ReceiveEvents(count);
    control->Raise(1);
    control->Raise(2);
    EXPECT_EQ(count.Changes, 1);
    subscription.reset();
    EXPECT_FALSE(control->Sink);
    control->Events = ForeignEventsId;
    EXPECT_FALSE(discovery.ReceiveEvents(count)) << "another suite's control tells none of ours";
}

class Surface final : public ports::ControlSurface, public windows::AutomationPeer {
 public:
    void SetBusyPointer(bool) override {}
    ports::DeviceContext ContextHandle() override { return 0; }
    std::shared_ptr<void> KeepAlive() override { return nullptr; }
    [[nodiscard]] IDispatch* Automation() const override { return m_control.Get(); }

 private:
    const ScriptedPointer m_control = NewScripted();
};

TEST_F(SuiteProxiesTest, AControlInNoWindowHasNoneAndNoError) {
    const ScriptedPointer object = NewScripted();
    windows::AutomationUtilities utilities{LateBound(static_cast<IDispatch*>(object.Get()))};
    Surface surface;
    object->Members[L"TopLevelWindow"] = [](const ScriptedCall&) -> _variant_t {
        throw HostException{E_FAIL, L"The control does not lie in a window.", L""};
    };
    EXPECT_EQ(utilities.TopLevelWindow(surface), 0);
    object->Members[L"TopLevelWindow"] = [](const ScriptedCall&) { return _variant_t(77L); };
    EXPECT_EQ(utilities.TopLevelWindow(surface), 77);
}

}  // namespace
}  // namespace krv::tests
