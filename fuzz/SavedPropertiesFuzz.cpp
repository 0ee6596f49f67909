// What a document keeps of the connection's settings and of the captured states, with any values in
// any of its entries.
//
// An input is a list of entries: a byte for the name, a byte for the kind of the value, then the
// value; texts stand behind their length. What is no list ends there.
#include <array>
#include <cstring>
#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"
#include "fuzz/FuzzTarget.h"
#include "suite/discovery/SavedSettings.h"
#include "suite/states/StateList.h"

namespace krv::fuzz {
namespace {

constexpr std::array Names{"DataCWritten",      "dataTransferSaved", "instrSetupInfoWritten",
                           "IOSettingWritten",  "ioVersion",         "ioInstrumentType",
                           "ioHostName",        "ioModelCount",      "ioModel1Key",
                           "ioModel1Name",      "ioModel2Key",       "ioModel2Name",
                           "ioSerialCount",     "ioSerial1Key",      "ioSerial1Port",
                           "ioSerial1BaudRate", "ioSerial1DataBits", "ioSerial1Handshake",
                           "ioSerial2BaudRate", "ioAddress",         "",
                           "instrSetupStates"};

class EntryReader {
 public:
    EntryReader(const std::uint8_t* data, std::size_t size) : m_data(data), m_left(size) {}

    [[nodiscard]] bool HasMore() const { return m_left > 1; }
    std::string Name() { return Names[Byte() % Names.size()]; }
    Value Any() {
        switch (Byte() % 11) {
            case 0:
                return (Byte() & 1) != 0;
            case 1:
                return Number<std::int16_t>();
            case 2:
                return Number<std::int32_t>();
            case 3:
                return Number<double>();
            case 4:
                return NullValue{};
            case 5:
                return DateValue{Number<double>()};
            case 6:
                return ByteArray{std::vector<std::byte>(Byte()), 0};
            case 7:
                return std::string(Byte() * 4U, 'x');
            case 8:
                return ArrayValue{};
            case 10:
                return States();
            default:
                return Text();
        }
    }

 private:
    std::uint8_t Byte() {
        if (m_left == 0) {
            return 0;
        }
        --m_left;
        return *m_data++;
    }
    template <class Kind>
    Kind Number() {
        std::array<std::uint8_t, sizeof(Kind)> bytes{};
        for (std::uint8_t& byte : bytes) {
            byte = Byte();
        }
        Kind number{};
        std::memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    // As the list of captured states is kept, with a byte of it changed.
    Value States() {
        suite::StateList states;
        for (int count = Byte() % 4; count > 0; --count) {
            states.Add({states.FreeName(), DateValue{46000}, "M7718C", "C.01", ByteArray{}});
        }
        MemoryPropertyBag bag;
        states.Write(bag);
        ByteArray packed = std::get<ByteArray>(bag.Entries().front().second);
        packed.bytes[Byte() % packed.bytes.size()] ^= std::byte{Byte()};
        return packed;
    }
    std::string Text() {
        std::string text(Byte(), '\0');
        for (char& character : text) {
            character = static_cast<char>(Byte());
        }
        return text;
    }

    const std::uint8_t* m_data;
    std::size_t m_left;
};

void ReadSettingsTwice(PropertyBag& bag) {
    MemoryPropertyBag written;
    try {
        suite::WriteSettings(suite::ReadSettings(bag), written);
    } catch (const Error& error) {
        Require(!error.Description().empty(), "a refusal says what is wrong");
        return;
    }
    MemoryPropertyBag again;
    const suite::SavedSettings settings = suite::ReadSettings(written);
    suite::WriteSettings(settings, again);
    Require(again.Entries() == written.Entries(), "settings that were read are kept whole");
    Require(settings.address.find_first_of("\r\n") == std::string::npos,
            "an address holds one line, which goes to an instrument");
}

void ReadStatesTwice(PropertyBag& bag) {
    suite::StateList states;
    try {
        states.Read(bag);
    } catch (const Error&) {
        Require(states.States().empty(), "a list that was refused changes nothing");
        return;
    }
    MemoryPropertyBag written;
    MemoryPropertyBag again;
    states.Write(written);
    states.Read(written);
    states.Write(again);
    Require(again.Entries() == written.Entries(), "states that were read are kept whole");
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krv::MemoryPropertyBag bag;
    for (krv::fuzz::EntryReader entries(data, size); entries.HasMore();) {
        const std::string name = entries.Name();
        bag.Write(name, entries.Any());
    }
    krv::fuzz::ReadSettingsTwice(bag);
    krv::fuzz::ReadStatesTwice(bag);
    return 0;
}
