// What a document keeps of connection settings, and which documents are refused.
#include "suite/discovery/SavedSettings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"
#include "suite/scpi/ScpiInstrument.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/ScriptedTransport.h"

namespace krv::tests {
namespace {

using namespace suite;

SavedSettings Full() {
    return {"Signal Generator",
            "LAB7",
            {{"M7718C", "M7718C"}, {"key", "M9920D"}},
            {{"RS232", 1, 19200, 8, 3}, {"second", 2, 9600, 7, 0}},
            "tcp://lab7:5025"};
}

MemoryPropertyBag BagOf(const SavedSettings& settings) {
    MemoryPropertyBag bag;
    WriteSettings(settings, bag);
    return bag;
}

TEST(SavedSettingsTest, ComeBackAsTheyWere) {
    MemoryPropertyBag bag = BagOf(Full());
    const SavedSettings read = ReadSettings(bag);
    EXPECT_EQ(read.instrumentType, "Signal Generator");
    EXPECT_EQ(read.supportedModels[1].key, "key");
    EXPECT_EQ(read.serialConfigurations[1].dataBits, 7);
    EXPECT_EQ(read.address, "tcp://lab7:5025");
    EXPECT_EQ(BagOf(read).Entries(), bag.Entries());

    MemoryPropertyBag empty;
    const SavedSettings defaults = ReadSettings(empty);
    EXPECT_EQ(defaults.hostName, "My Computer");
    EXPECT_EQ(BagOf(defaults).Entries(), BagOf({}).Entries());
}

struct Change {
    int line;
    std::string name;
    Value value;
    std::int32_t error;
};

TEST(SavedSettingsTest, AreRefusedWhenAnEntryCannotBe) {
    constexpr std::int32_t Impossible = ErrorNumber::InvalidPropertyValue;
    constexpr std::int32_t WrongKind = ErrorNumber::TypeMismatch;
    const std::string longText(256, 'x');
    const Change changes[] = {
        {__LINE__, "ioVersion", std::int32_t{2}, Impossible},
        {__LINE__, "ioVersion", NullValue{}, WrongKind},
        {__LINE__, "ioInstrumentType", 5.0, WrongKind},
        {__LINE__, "ioHostName", longText, Impossible},
        {__LINE__, "ioHostName", std::string("LAB\r\n7"), Impossible},
        {__LINE__, "ioModelCount", std::int32_t{-1}, Impossible},
        {__LINE__, "ioModelCount", std::int32_t{0x7FFFFFFF}, Impossible},
        {__LINE__, "ioModelCount", 1e10, ErrorNumber::Overflow},
        {__LINE__, "ioModel2Name", true, WrongKind},
        {__LINE__, "ioModel2Key", longText, Impossible},
        {__LINE__, "ioSerialCount", std::int32_t{17}, Impossible},
        {__LINE__, "ioSerial1BaudRate", std::int32_t{0}, Impossible},
        {__LINE__, "ioSerial2DataBits", std::int32_t{9}, Impossible},
        {__LINE__, "ioSerial2Key", std::string("\x7F"), Impossible},
        {__LINE__, "ioAddress", longText, Impossible},
        {__LINE__, "ioAddress", std::string("tcp://lab7:5025\nSYST:PRES"), Impossible},
        {__LINE__, "ioAddress", std::string("tcp://lab7\0:5025", 16), Impossible},
        {__LINE__, "ioAddress", std::string("tcp://lab\xC2\x85:5025"), Impossible},
        {__LINE__, "ioAddress", std::int32_t{5025}, WrongKind},
    };
    for (const Change& change : changes) {
        SCOPED_TRACE(change.line);
        MemoryPropertyBag bag = BagOf(Full());
        bag.Write(change.name, change.value);
        EXPECT_EQ(ErrorNumberOf([&] { (void)ReadSettings(bag); }), change.error);
    }
}

TEST(SavedSettingsTest, AreNotWrittenWhenTheyCouldNotBeRead) {
    SavedSettings settings = Full();
    settings.address += '\n';
    MemoryPropertyBag bag;
    EXPECT_EQ(ErrorNumberOf([&] { WriteSettings(settings, bag); }),
              ErrorNumber::InvalidPropertyValue);
    settings = Full();
    settings.supportedModels.resize(101);
    EXPECT_EQ(ErrorNumberOf([&] { WriteSettings(settings, bag); }),
              ErrorNumber::InvalidPropertyValue);
    EXPECT_TRUE(bag.Entries().empty());
}

// A document's address goes to the transports of known schemes alone, and in one piece.
TEST(SavedSettingsTest, LeadToAnInstrumentOnlyByAUsableAddress) {
    std::string opened;
    std::optional<TimeOuts> timeOuts;
    const auto script = std::make_shared<TransportScript>();
    TransportRegistry transports;
    transports.Add("serial", [&](const std::string& rest, const TimeOuts&) {
        opened = rest;
        return std::make_unique<ScriptedTransport>(script);
    });
    transports.Add("tcp", [&](const std::string& rest, const TimeOuts& given) {
        opened = rest;
        timeOuts = given;
        return std::make_unique<ScriptedTransport>(script);
    });
    for (const std::string& address :
         {std::string("tcp://") + std::string(250, 'x'), std::string("tcp://lab\n7:5025"),
          std::string("file:///etc"), std::string("lab7:5025"), std::string(),
          std::string(R"(serial://\\server\share)"), std::string("serial:///dev/ttyS0"),
          std::string("serial://COM0"), std::string("serial://COM1:stream")}) {
        EXPECT_NE(ErrorNumberOf([&] { (void)ReopenInstrument(transports, address); }), 0)
            << address;
    }
    EXPECT_EQ(opened, "");
    EXPECT_EQ(script->sent, "");

    script->replies = {"CORVANE,M7718C,US1,C.01\n", "\"\"\n"};
    EXPECT_EQ(ReopenInstrument(transports, "serial://com12?baud=9600")->Model(), "M7718C");
    EXPECT_EQ(opened, "com12?baud=9600");
    script->replies = {"CORVANE,M7718C,US1,C.01\n", "\"\"\n"};
    EXPECT_EQ(ReopenInstrument(transports, "tcp://lab7:5025")->Model(), "M7718C");
    EXPECT_EQ(opened, "lab7:5025");
    EXPECT_LE(timeOuts->connect + timeOuts->inactivity, std::chrono::seconds(5))
        << "the document's user waits";
    EXPECT_GE(TimeOuts().inactivity, std::chrono::seconds(30)) << "captures by hand take as long";
}

}  // namespace
}  // namespace krv::tests
