#include <cstdint>
#include <fstream>
#include <memory>
#include <vector>

#include "suite/scpi/ScpiConnection.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/SuiteTest.h"
#include "windows/automation/ComObject.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

constexpr const char* NotConnected =
    "-2147221499 InstrumentServer: No instrument is connected. Connect to an instrument first.";

class SuiteServer : public SuiteTest {
 protected:
    void Connect(const std::string& address) {
        session = OpenSession(address);
        instrument.PutObject(L"IO", session.Object());
    }

    void TearDown() override {
        server = instrument = arb = options = session = LateBound();
        SuiteTest::TearDown();
    }

    LateBound server = Create(__uuidof(CvnKRVServer));
    LateBound instrument = server.GetObject(L"Instrument");
    LateBound arb = server.GetObject(L"Arb");
    LateBound options = server.GetObject(L"Options");
    LateBound session;
};

std::vector<std::string> Texts(const _variant_t& list) {
    std::vector<std::string> texts;
    const LONG count = static_cast<LONG>(V_ARRAY(&list)->rgsabound[0].cElements);
    for (LONG index = 0; index < count; ++index) {
        _variant_t item;
        ThrowIfFailed(SafeArrayGetElement(V_ARRAY(&list), &index, &item));
        texts.push_back(TextOf(item));
    }
    return texts;
}

// The codes as a client's array.
_variant_t Codes(std::vector<std::int16_t> codes, LONG lowerBound) {
    SAFEARRAYBOUND bound{static_cast<ULONG>(codes.size()), lowerBound};
    _variant_t array;
    V_VT(&array) = VT_ARRAY | VT_I2;
    V_ARRAY(&array) = SafeArrayCreate(VT_I2, 1, &bound);
    void* data = nullptr;
    SafeArrayAccessData(V_ARRAY(&array), &data);
    std::copy(codes.begin(), codes.end(), static_cast<std::int16_t*>(data));
    SafeArrayUnaccessData(V_ARRAY(&array));
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

TEST_F(SuiteServer, SaysWhatIsMissingWhileUnconnected) {
    EXPECT_FALSE(instrument.GetObject(L"IO"));
    EXPECT_EQ(
        Texts(server.Get(L"SupportedModels")),
        (std::vector<std::string>{"M7718C", "M9920C", "M9920D", "M771XB", "M771XD", "KRV-B"}));
    for (const auto& [object, member] : std::vector<std::pair<const LateBound*, const wchar_t*>>{
             {&server, L"Model"},
             {&server, L"ModelName"},
             {&instrument, L"Model"},
             {&instrument, L"FirmwareRevision"},
             {&instrument, L"SerialNumber"},
             {&options, L"ArbInstalled"},
             {&options, L"Names"},
             {&arb, L"HasDualArbOption"},
             {&arb, L"ArbFileSelected"},
             {&arb, L"SelectedArbFile"}}) {
        EXPECT_EQ(waveform::FailureOf([&] { return object->Get(member); }), NotConnected) << member;
    }
    const _variant_t codes = Codes({1, 2}, 0);
    EXPECT_EQ(waveform::FailureOf([&] {
                  arb.Call(L"DownloadMarkers", {L"A", codes, 0L});
              }),
              NotConnected);
    EXPECT_EQ(waveform::FailureOf([&] { arb.Call(L"NoSuchMember"); }).substr(0, 11), "-2147352570");

    BSTR model = nullptr;
    const auto direct = Query<ICvnKRVServer>(server);
    EXPECT_EQ(waveform::FailureOf([&] {
                  ThrowIfFailed(direct->get_Model(&model), direct.Get(), __uuidof(ICvnKRVServer));
              }),
              NotConnected);
    EXPECT_EQ(direct->get_Model(nullptr), E_POINTER);
}

TEST_F(SuiteServer, DescribesTheInstrumentOfItsSession) {
    const RunningGenerator generator({.model = "M9920C",
                                      .options = {"R2X", "1E5"},
                                      .firmware = "C.01.02",
                                      .serialNumber = "US123"});
    Connect(generator.Address());
    EXPECT_EQ(server.GetText(L"Model"), "M9920C");
    EXPECT_EQ(server.GetText(L"ModelName"), "M9920C");
    EXPECT_EQ(instrument.GetText(L"Model"), "M9920C");
    EXPECT_EQ(instrument.GetText(L"FirmwareRevision"), "C.01.02");
    EXPECT_EQ(instrument.GetText(L"SerialNumber"), "US123");
    EXPECT_EQ(Texts(options.Get(L"Names")), (std::vector<std::string>{"R2X", "1E5"}));
    EXPECT_TRUE(options.GetBool(L"ArbInstalled"));
    EXPECT_TRUE(arb.GetBool(L"HasDualArbOption"));
    EXPECT_FALSE(arb.GetBool(L"ArbFileSelected"));
    EXPECT_EQ(arb.GetText(L"SelectedArbFile"), "");

    const LateBound held = instrument.GetObject(L"IO");
    EXPECT_EQ(held.Object(), session.Object());
    EXPECT_EQ(held.GetText(L"Address"), generator.Address());
    EXPECT_EQ(held.GetText(L"ConnectionKind"), "LAN");
    EXPECT_FALSE(Query<ICvnSerialSession>(held));
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

TEST_F(SuiteServer, RefusesArgumentsThatAreNoArraysOfCodes) {
    Connect("sim://M7718C");
    SAFEARRAYBOUND bounds[]{{2, 0}, {2, 0}};
    _variant_t doubles;
    V_VT(&doubles) = VT_ARRAY | VT_R8;
    V_ARRAY(&doubles) = SafeArrayCreate(VT_R8, 1, bounds);
    _variant_t plane;
    V_VT(&plane) = VT_ARRAY | VT_I2;
    V_ARRAY(&plane) = SafeArrayCreate(VT_I2, 2, bounds);
    for (const _variant_t& codes : {doubles, plane, _variant_t(5L), _variant_t(L"5")}) {
        EXPECT_EQ(waveform::FailureOf([&] {
                      arb.Call(L"DownloadInterleaved", {L"A", codes, 0L});
                  }),
                  "13 CvnKRVServer.CvnKRVServer: Type mismatch: codes are a one-dimensional array "
                  "of 16-bit integers.");
    }
    EXPECT_TRUE(instrument.GetObject(L"IO"));
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
    const std::string message = TextOf(variable);
    EXPECT_FALSE(message.empty());
    EXPECT_EQ(read(reference), 0);
    EXPECT_NE(TextOf(variable), message);

    BSTR text = SysAllocString(L"before");
    VARIANT textReference{};
    V_VT(&textReference) = VT_BYREF | VT_BSTR;
    V_BSTRREF(&textReference) = &text;
    fail();
    EXPECT_EQ(read(textReference), number);
    EXPECT_EQ(TextOf(_variant_t(text)), message);
    SysFreeString(text);

    long other = 0;
    VARIANT numberReference{};
    V_VT(&numberReference) = VT_BYREF | VT_I4;
    V_I4REF(&numberReference) = &other;
    EXPECT_EQ(waveform::FailureOf([&] { read(numberReference); }).substr(0, 3), "13 ");
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
    for (int tries = 0; tries < 200 && observer.Query("SYSTem:REMote?") != "0"; ++tries) {
        Sleep(5);
    }
    EXPECT_EQ(observer.Query("SYSTem:REMote?"), "0");

    generator.reset();
    EXPECT_NE(waveform::FailureOf([&] { instrument.Call(L"ReadError", {_variant_t()}); }), "");
    EXPECT_FALSE(instrument.GetObject(L"IO"));
    const std::string failure = waveform::FailureOf([&] {
        ThrowIfFailed(frontPanel->ReturnToLocal(), frontPanel.Get(), __uuidof(ICvnGpibSession));
    });
    EXPECT_NE(failure.find("The connection was lost"), std::string::npos) << failure;
}

TEST_F(SuiteServer, LetsGoOfASessionWithoutEndingIt) {
    const RunningGenerator generator;
    Connect(generator.Address());
    instrument.PutObject(L"IO", nullptr);
    EXPECT_FALSE(instrument.GetObject(L"IO"));
    EXPECT_EQ(waveform::FailureOf([&] { return server.Get(L"Model"); }), NotConnected);
    {
        const LateBound second = Create(__uuidof(CvnKRVServer));
        second.GetObject(L"Instrument").PutObject(L"IO", session.Object());
        EXPECT_EQ(second.GetText(L"Model"), "M7718C");
    }
    instrument.Put(L"IO", _variant_t(session.Object()));
    EXPECT_EQ(static_cast<long>(instrument.Call(L"ReadError", {_variant_t()})), 0);
}

// A session as another maker's component hands it out: all that is known is its address.
class ForeignSession final : public ComObject<IDispatch> {
 public:
    explicit ForeignSession(std::string address) : m_address(std::move(address)) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        *ids = std::wstring(names[0]) == L"Address" ? 1 : DISPID_UNKNOWN;
        return *ids == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        *result = _variant_t(ToWide(m_address).c_str()).Detach();
        return S_OK;
    }

 private:
    std::string m_address;
};

TEST_F(SuiteServer, ConnectsToAForeignSessionByItsAddress) {
    const RunningGenerator generator;
    const auto foreign = MakeCom<ForeignSession>(generator.Address());
    instrument.PutObject(L"IO", foreign.Get());
    EXPECT_EQ(server.GetText(L"Model"), "M7718C");
    EXPECT_EQ(instrument.GetObject(L"IO").Object(), static_cast<IDispatch*>(foreign.Get()));

    const auto wrong = MakeCom<ForeignSession>("nowhere");
    EXPECT_NE(waveform::FailureOf([&] {
                  instrument.PutObject(L"IO", wrong.Get());
              }).find("The address \"nowhere\" cannot be used"),
              std::string::npos);
    EXPECT_FALSE(instrument.GetObject(L"IO"));
}

}  // namespace
}  // namespace krv::tests
