#include <cstdint>
#include <fstream>
#include <memory>
#include <vector>

#include "suite/scpi/ScpiConnection.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/ScriptedObject.h"
#include "tests/windows/support/SuiteTest.h"
#include "windows/automation/ArrayAccess.h"

namespace krv::tests {
namespace {

using windows::LateBound;
using windows::ThrowIfFailed;
using windows::ToWide;

class SuiteServer : public SuiteTest {
 protected:
    void Connect(const std::string& address) {
        session = OpenSession(address);
        instrument.PutObject(L"IO", session.Object());
    }

    void TearDown() override {
        server = instrument = arb = session = LateBound();
        SuiteTest::TearDown();
    }

    LateBound server = Create(__uuidof(CvnKRVServer));
    LateBound instrument = server.GetObject(L"Instrument");
    LateBound arb = server.GetObject(L"Arb");
    LateBound session;
};

// The codes as a client's array.
_variant_t Codes(std::vector<std::int16_t> codes, LONG lowerBound) {
    SAFEARRAYBOUND bound{static_cast<ULONG>(codes.size()), lowerBound};
    _variant_t array;
    V_VT(&array) = VT_ARRAY | VT_I2;
    V_ARRAY(&array) = SafeArrayCreate(VT_I2, 1, &bound);
    const windows::ArrayAccess access(V_ARRAY(&array));
    std::copy(codes.begin(), codes.end(), access.Elements<std::int16_t>());
    return array;
}

std::vector<std::int16_t> Stored(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<std::int16_t> codes;
    for (std::int16_t code = 0; stream.read(reinterpret_cast<char*>(&code), sizeof code);) {
        codes.push_back(code);
    }
    return codes;
}

TEST_F(SuiteServer, SendsArraysWithAnyLowerBoundByValueAndByReference) {
    const TemporaryFolder folder;
    const RunningGenerator generator({.storeFolder = folder.Path()});
    Connect(generator.Address());
    const std::vector<std::int16_t> i{-32768, -1, 0, 32767};
    const std::vector<std::int16_t> q{1, 2, 3, 4};
    for (const LONG lowerBound : {0L, 1L, -5L}) {
        _variant_t iCodes = Codes(i, lowerBound);
        _variant_t qCodes = Codes(q, lowerBound);
        SAFEARRAY* array = V_ARRAY(&iCodes);
        VARIANT byReference{};
        V_VT(&byReference) = VT_BYREF | VT_ARRAY | VT_I2;
        V_ARRAYREF(&byReference) = &array;
        VARIANT variable{};
        V_VT(&variable) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&variable) = &iCodes;
        const std::string name = "W" + std::to_string(lowerBound + 5);
        for (const VARIANT& codes : {VARIANT(iCodes), byReference, variable}) {
            const _variant_t text(ToWide(name).c_str());
            std::vector<VARIANT> arguments{text, codes, qCodes, _variant_t(0L)};
            arb.CallByReference(L"DownloadIQ", arguments);
            EXPECT_EQ(Stored(folder.Path() / (name + ".i.int16")), i);
            EXPECT_EQ(Stored(folder.Path() / (name + ".q.int16")), q);
            arb.Call(L"DownloadInterleaved", {L"Other", qCodes, 0L});
            arb.Call(L"DownloadIQ", {text, Codes({7}, 1), _variant_t(), 0L});
            EXPECT_EQ(Stored(folder.Path() / (name + ".i.int16")), (std::vector<std::int16_t>{7}));
        }
        EXPECT_EQ(V_ARRAY(&iCodes)->cLocks, 0U);
    }
    EXPECT_EQ(Stored(folder.Path() / "Other.iq.int16"), q);
    arb.Call(L"DownloadMarkers", {L"Other", Codes({3, 0}, 1), 0L});
    EXPECT_EQ(Stored(folder.Path() / "Other.markers.int16"), (std::vector<std::int16_t>{3, 0}));
}

TEST_F(SuiteServer, GivesTheErrorQueueBackByReference) {
    Connect("sim://M7718C");
    const auto read = [&](VARIANT target) {
        std::vector<VARIANT> arguments{target};
        return static_cast<long>(instrument.CallByReference(L"ReadError", arguments));
    };
    const auto fail = [&] { arb.Call(L"DownloadMarkers", {L"Missing", Codes({1}, 0), 0L}); };
    _variant_t variable(17L);
    VARIANT reference{};
    V_VT(&reference) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&reference) = &variable;
    fail();
    const long number = read(reference);
    EXPECT_LT(number, 0);
    const std::string message = windows::TextOf(variable);
    EXPECT_FALSE(message.empty());
    EXPECT_EQ(read(reference), 0);
    EXPECT_NE(windows::TextOf(variable), message);

    BSTR text = SysAllocString(L"before");
    VARIANT textReference{};
    V_VT(&textReference) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&textReference) = &text;
    fail();
    EXPECT_EQ(read(textReference), number);
    EXPECT_EQ(windows::TextOf(_variant_t(text)), message);
    SysFreeString(text);

    long other = 0;
    VARIANT numberReference{};
    V_VT(&numberReference) = VT_BYREF | VT_I4;
    V_I4REF(&numberReference) = &other;
    EXPECT_EQ(ErrorOf([&] { read(numberReference); }).substr(0, 3), "13 ");
}

TEST_F(SuiteServer, ReturnsTheInstrumentToItsFrontPanel) {
    auto generator = std::make_unique<RunningGenerator>();
    Connect(generator->Address());
    suite::TransportRegistry transports;
    suite::AddTcpTransport(transports);
    suite::ScpiConnection observer(transports.Open(generator->Address(), {}), "observer", {});
    const auto frontPanel = Query<ICvnGpibSession>(session);
    ASSERT_TRUE(frontPanel);
    EXPECT_EQ(observer.Query("SYSTem:REMote?"), "1");
    EXPECT_EQ(frontPanel->ReturnToLocal(), S_OK);
    EXPECT_TRUE(WaitUntil([&] { return observer.Query("SYSTem:REMote?") == "0"; }));

    generator.reset();
    EXPECT_NE(ErrorOf([&] { instrument.Call(L"ReadError", {_variant_t()}); }), "none");
    EXPECT_FALSE(instrument.GetObject(L"IO"));
    const std::string failure = ErrorOf([&] {
        ThrowIfFailed(frontPanel->ReturnToLocal(), frontPanel.Get(), __uuidof(ICvnGpibSession));
    });
    EXPECT_NE(failure.find("The connection was lost"), std::string::npos) << failure;
}

TEST_F(SuiteServer, ConnectsToAForeignSessionByItsAddress) {
    const RunningGenerator generator;
    const auto foreign = NewScripted({{L"Address", ToWide(generator.Address()).c_str()}});
    instrument.PutObject(L"IO", foreign.Get());
    EXPECT_EQ(server.GetText(L"Model"), "M7718C");
    EXPECT_EQ(instrument.GetObject(L"IO").Object(), static_cast<IDispatch*>(foreign.Get()));

    const auto wrong = NewScripted({{L"Address", L"nowhere"}});
    EXPECT_NE(ErrorOf([&] {
                  instrument.PutObject(L"IO", wrong.Get());
              }).find("The address \"nowhere\" cannot be used"),
              std::string::npos);
    EXPECT_FALSE(instrument.GetObject(L"IO"));
}

}  // namespace
}  // namespace krv::tests
