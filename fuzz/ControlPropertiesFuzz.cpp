// A document's property bag as the toolbar control reads it: whatever the bag holds, the control
// works afterwards, can be saved and read again, and an instrument was asked for something only if
// all of the bag's connection settings were possible ones.
//
// An input is a list of entries: a byte for the name, a byte for the kind of the value, then the
// value; texts stand behind their length. What is no list ends there.
#include <array>
#include <cstring>
#include <memory>
#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"
#include "control/KRVControl.h"
#include "fuzz/FuzzTarget.h"
#include "suite/discovery/SavedSettings.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/states/StateList.h"
#include "tests/support/FakeSuite.h"
#include "tests/support/QuietAppConnection.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/support/ScriptedTransport.h"

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

// The suite's own settings, with an instrument behind every address of the scheme tcp.
class DocumentSettings final : public ports::IOSettings {
 public:
    explicit DocumentSettings(bool& asked) : m_asked(asked) {}

    void SetInstrumentType(const std::string&) override {}
    void AddSupportedInstrument(const std::string&, const std::string&) override {}
    void AddInterfaceConfiguration(const std::shared_ptr<ports::InterfaceConfiguration>&,
                                   const std::string&) override {}
    std::shared_ptr<ports::IoSession> IO() override { return m_session; }
    void SetIO(const std::shared_ptr<ports::IoSession>& session) override { m_session = session; }
    std::string HostName() override { return m_settings.hostName; }
    void WriteProperties(PropertyBag& bag) override { suite::WriteSettings(m_settings, bag); }
    void ReadProperties(PropertyBag& bag) override {
        m_settings = suite::ReadSettings(bag);
        try {
            m_session = suite::ReopenInstrument(Transports(), m_settings.address);
        } catch (const Error&) {
            m_session = nullptr;
        }
    }

 private:
    suite::TransportRegistry Transports() {
        suite::TransportRegistry transports;
        transports.Add("tcp", [this](const std::string&, const suite::TimeOuts&) {
            m_asked = true;
            const auto script = std::make_shared<tests::TransportScript>();
            script->replies = {"CORVANE,M7718C,US1,C.01\n", "\"\"\n"};
            return std::make_unique<tests::ScriptedTransport>(script);
        });
        return transports;
    }

    bool& m_asked;
    suite::SavedSettings m_settings;
    std::shared_ptr<ports::IoSession> m_session;
};

class DocumentStates final : public ports::StateInfo {
 public:
    void SetSetupInterface(ports::SetupInterface*) override {}
    void WriteProperties(PropertyBag& bag) override { m_states.Write(bag); }
    void ReadProperties(PropertyBag& bag) override { m_states.Read(bag); }

 private:
    suite::StateList m_states;
};

class Suite final : public ports::SuiteComponents {
 public:
    bool Asked = false;

    std::shared_ptr<ports::KRVServer> CreateServer() override { return m_fakes.CreateServer(); }
    std::shared_ptr<ports::IOSettings> CreateIOSettings() override {
        return std::make_shared<DocumentSettings>(Asked);
    }
    std::shared_ptr<ports::StateInfo> CreateStateInfo() override {
        return std::make_shared<DocumentStates>();
    }
    std::shared_ptr<ports::RS232Config> CreateRS232Config() override {
        return m_fakes.CreateRS232Config();
    }
    std::shared_ptr<ports::VCUtilities> CreateUtilities() override {
        return m_fakes.CreateUtilities();
    }

 private:
    tests::CallLog m_log;
    tests::FakeSuite m_fakes{m_log};
};

class Adapters final : public hosts::AdapterFactory {
 public:
    std::shared_ptr<hosts::AppConnection> CreateAdapter(hosts::SavedDataCvalues) override {
        return std::make_shared<tests::QuietAppConnection>();
    }
};

struct Bench {
    tests::CallLog log;
    tests::ScriptedDesktop desk;
    tests::FakeSurface surface{log};
    Suite suite;
    Adapters adapters;
    control::KRVControl control{
        control::ControlServices{desk.Services(), surface, suite, adapters}};
};

bool TellsOfPossibleSettings(PropertyBag& bag) {
    try {
        if (bag.ReadBoolean("instrSetupInfoWritten", false)) {
            suite::StateList().Read(bag);
        }
        return bag.ReadBoolean("IOSettingWritten", false) &&
               suite::IsUsableAddress(suite::ReadSettings(bag).address);
    } catch (const Error&) {
        return false;
    }
}

MemoryPropertyBag SavedAfterReading(PropertyBag& bag) {
    Bench bench;
    bench.control.ReadProperties(bag);
    Require(!bench.suite.Asked || TellsOfPossibleSettings(bag),
            "an instrument is asked only when states and settings are possible");
    MemoryPropertyBag saved;
    bench.control.WriteProperties(saved);
    return saved;
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace krv;
    MemoryPropertyBag bag;
    for (fuzz::EntryReader entries(data, size); entries.HasMore();) {
        const std::string name = entries.Name();
        bag.Write(name, entries.Any());
    }
    MemoryPropertyBag first = fuzz::SavedAfterReading(bag);
    // A control that couldn't be read has no settings, one that was saved without has empty ones.
    MemoryPropertyBag saved = fuzz::SavedAfterReading(first);
    fuzz::Require(fuzz::SavedAfterReading(saved).Entries() == saved.Entries(),
                  "what was saved is restored whole");
    return 0;
}
