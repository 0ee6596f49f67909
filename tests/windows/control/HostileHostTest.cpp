// The toolbar control in front of hosts that aren't what they should be, with the suite installed.
#include <string>
#include <vector>

#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/ExcelModel.h"
#include "tests/windows/support/RegisteredLibrary.h"
#include "tests/windows/support/ScriptedObject.h"

namespace krv::tests {
namespace {

using windows::LateBound;

// Late bound, each answer a failure of the given kind.
ScriptedPointer FailingHost(const ScriptedObject::Member& failure) {
    ScriptedPointer host = NewScripted();
    host->Answer(ExcelApplicationId);
    host->Events = ExcelEventsId;
    for (const wchar_t* name :
         {L"ActiveWorkbook", L"CommandBars", L"AddIns", L"Cursor", L"StatusBar",
          L"DisplayStatusBar", L"Name", L"Range", L"Selection"}) {
        host->Members[name] = failure;
    }
    return host;
}

class HostileHosts : public ControlTest {
 protected:
    ~HostileHosts() override {
        EXPECT_EQ(windows::ModuleCount::Value(), m_objectsBefore) << "references to hosts are left";
    }

    static bool HasHost(const LateBound& control) {
        return control.Get(L"ConnectedApplication").pdispVal != nullptr;
    }

    // Every command that a host or a click can give, apart from those that open dialogs. None may
    // fail, say anything, or hang.
    void ExpectQuiet(const LateBound& control) {
        for (const wchar_t* command : {L"UpdateConnectedStatus", L"DoHelp"}) {
            EXPECT_EQ(ErrorOf([&] { control.Call(command); }), "none") << command;
        }
        EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
    }

 private:
    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
    const long m_objectsBefore = windows::ModuleCount::Value();
};

TEST_F(HostileHosts, ThatNoAdapterTakesLeaveTheControlWithoutOne) {
    const std::vector<std::pair<const char*, ScriptedPointer>> hosts{
        {"none at all", nullptr},
        {"late bound only", NewScripted({{L"Name", L"Microsoft Excel"}})},
        {"Excel's interface and no member",
         [] {
             auto host = NewScripted();
             host->Answer(ExcelApplicationId);
             return host;
         }()},
        {"Excel's interface without its events",
         [] {
             auto host = FailingHost([](const ScriptedCall&) { return _variant_t(); });
             host->Events = IID_NULL;
             return host;
         }()},
        {"fails with an exception", FailingHost([](const ScriptedCall&) -> _variant_t {
             throw HostException{static_cast<HRESULT>(0x800A03EC), L"Refused", L"Host"};
         })},
        {"is busy", FailingHost([](const ScriptedCall&) -> _variant_t {
             throw CallFailure{RPC_E_CALL_REJECTED};
         })},
        {"is gone", FailingHost([](const ScriptedCall&) -> _variant_t {
             throw CallFailure{RPC_E_DISCONNECTED};
         })},
        {"answers texts for objects",
         FailingHost([](const ScriptedCall&) { return _variant_t(L"what?"); })},
    };
    const LateBound control = NewControl();
    for (const auto& [what, host] : hosts) {
        SCOPED_TRACE(what);
        EXPECT_EQ(ErrorOf([&] { control.PutObject(L"ConnectedApplication", host.Get()); }), "none");
        EXPECT_FALSE(HasHost(control));
        ExpectQuiet(control);
        if (host) {
            EXPECT_EQ(host->AddRef(), 2U) << "let go of";
            host->Release();
        }
    }
    // Whatever came before, the right one is taken.
    ExcelModel excel;
    excel.Application->Properties[L"ActiveWorkbook"] =
        ObjectVariant(NewScripted({{L"Name", L"B"}}));
    control.PutObject(L"ConnectedApplication", excel.Application.Get());
    EXPECT_TRUE(HasHost(control));
}

// One that is well when it is connected to, and dies or turns nasty afterwards.
TEST_F(HostileHosts, MayTurnNastyLater) {
    for (const HRESULT failure : {RPC_E_DISCONNECTED, RPC_E_CALL_REJECTED, E_FAIL, E_OUTOFMEMORY}) {
        SCOPED_TRACE(failure);
        const ScriptedPointer book = NewScripted({{L"Name", L"Book1"}});
        const ScriptedPointer host = FailingHost(
            [failure](const ScriptedCall&) -> _variant_t { throw CallFailure{failure}; });
        host->Members.erase(L"ActiveWorkbook");
        host->Properties[L"ActiveWorkbook"] = ObjectVariant(book);
        {
            const LateBound control = NewControl();
            control.PutObject(L"ConnectedApplication", host.Get());
            EXPECT_TRUE(HasHost(control));
            host->Members[L"ActiveWorkbook"] = host->Members[L"Name"];
            book->Properties.clear();
            ExpectQuiet(control);
            ASSERT_TRUE(host->Sink != nullptr);
            // Its events with nothing, with the wrong thing and with a dead workbook.
            _variant_t dead = ObjectVariant(book);
            _variant_t nobody(static_cast<IDispatch*>(nullptr));
            _variant_t text(L"Book1");
            for (const DISPID event : {0x620, 0x621, 0x7FFF}) {
                host->Raise(event);
                host->Raise(event, {dead});
                host->Raise(event, {nobody});
                host->Raise(event, {text, text, text});
            }
            EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
        }
        EXPECT_TRUE(host->Sink == nullptr) << "its events are no longer received";
    }
}

// A host that keeps the control, which keeps the host: an end to both comes when the host lets go.
TEST_F(HostileHosts, MayHoldTheControlThatHoldsThem) {
    ExcelModel excel;
    excel.Application->Properties[L"ActiveWorkbook"] =
        ObjectVariant(NewScripted({{L"Name", L"B"}}));
    {
        const LateBound control = NewControl();
        excel.Application->Properties[L"Control"] = _variant_t(control.Object());
        control.PutObject(L"ConnectedApplication", excel.Application.Get());
        ExpectQuiet(control);
    }
    EXPECT_NE(TestedLibrary::Control().ObjectCount(), 0);
    excel.Application->Properties.clear();
    EXPECT_EQ(TestedLibrary::Control().ObjectCount(), 0);
    EXPECT_TRUE(excel.Application->Sink == nullptr);
}

}  // namespace
}  // namespace krv::tests
