#include <vector>

#include "tests/windows/SuiteTest.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

class SuiteSettings : public SuiteTest {};

// The items in the order in which For Each meets them.
std::string ForEach(const LateBound& collection) {
    const _variant_t object = collection.Get(L"_NewEnum");
    Microsoft::WRL::ComPtr<IEnumVARIANT> items;
    ThrowIfFailed(V_UNKNOWN(&object)->QueryInterface(
        IID_IEnumVARIANT, reinterpret_cast<void**>(items.GetAddressOf())));
    std::string joined;
    for (_variant_t item; items->Next(1, &item, nullptr) == S_OK; item.Clear()) {
        joined += TextOf(item) + ';';
    }
    return joined;
}

TEST_F(SuiteSettings, HoldWhatTheyAreGiven) {
    const LateBound settings = Create(__uuidof(IOSettings));
    EXPECT_EQ(settings.GetText(L"HostName"), "My Computer");
    EXPECT_FALSE(settings.GetObject(L"IO"));
    settings.Put(L"InstrumentType", L"Signal Generator");
    settings.Put(L"HostName", L"b\u00FCro");
    EXPECT_EQ(settings.GetText(L"InstrumentType"), "Signal Generator");
    EXPECT_EQ(settings.GetText(L"HostName"), "b\xC3\xBCro");

    const LateBound serial = Create(__uuidof(RS232Config));
    const wchar_t* const members[]{L"Port", L"BaudRate", L"DataBits", L"Handshake"};
    const long values[]{1, 19200, 8, 3};
    for (std::size_t index = 0; index < 4; ++index) {
        serial.Put(members[index], values[index]);
    }
    settings.GetObject(L"InterfaceConfigurations").Call(L"Add", {serial.Object(), L"RS232"});
    const LateBound found =
        settings.GetObject(L"InterfaceConfigurations").CallObject(L"Item", {L"rs232"});
    for (std::size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(found.GetLong(members[index]), values[index]);
    }
    settings.PutObject(L"IO", serial.Object());
    EXPECT_EQ(settings.GetObject(L"IO").Object(), serial.Object());
    settings.PutObject(L"IO", nullptr);
    EXPECT_FALSE(settings.GetObject(L"IO"));
}

TEST_F(SuiteSettings, CollectionsAreFoundByKeyAndByNumber) {
    const LateBound settings = Create(__uuidof(IOSettings));
    const LateBound models = settings.GetObject(L"SupportedInstruments");
    EXPECT_EQ(ForEach(models), "");
    for (const wchar_t* model : {L"M7718C", L"M9920C", L"KRV-B"}) {
        models.Call(L"Add", {model, model});
    }
    models.Call(L"Add", {L"no key"});
    models.Call(L"Add", {L"no key either"});
    EXPECT_EQ(models.GetLong(L"Count"), 5);
    EXPECT_EQ(TextOf(models.Call(L"Item", {L"m9920c"})), "M9920C");
    EXPECT_EQ(TextOf(models.Call(L"Item", {3L})), "KRV-B");
    EXPECT_EQ(ForEach(models), "M7718C;M9920C;KRV-B;no key;no key either;");

    const std::string source = " CvnDiscovery.IOSettings: ";
    EXPECT_EQ(waveform::FailureOf([&] {
                  models.Call(L"Add", {L"again", L"KRV-b"});
              }),
              "457" + source + "This key is already associated with an element of this collection");
    EXPECT_EQ(waveform::FailureOf([&] { models.Call(L"Item", {L"M0"}); }),
              "5" + source + "Invalid procedure call or argument");
    for (const long number : {0L, 6L, -1L}) {
        EXPECT_EQ(waveform::FailureOf([&] { models.Call(L"Item", {number}); }),
                  "9" + source + "Subscript out of range");
    }
    EXPECT_EQ(waveform::FailureOf([&] {
                  models.Call(L"Add", {L"x", 4L});
              }),
              "13" + source + "Type mismatch");
    models.Call(L"Remove", {L"M9920C"});
    models.Call(L"Remove", {1L});
    EXPECT_EQ(ForEach(models), "KRV-B;no key;no key either;");
}

}  // namespace
}  // namespace krv::tests
