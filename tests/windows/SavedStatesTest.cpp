// Captured states in documents: saved and loaded by each interface, brought back to the instrument
// from there, and refused where they don't belong or were altered.
#include <algorithm>
#include <array>

#include "tests/support/RunningGenerator.h"
#include "tests/windows/ControlInDocuments.h"
#include "tests/windows/SetupDialogUser.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using suite::StateWindow;

constexpr const char* StatesKey = "instrSetupStates";

// A generator that is served over TCP.
class Instrument {
 public:
    explicit Instrument(const std::string& serialNumber)
        : m_generator(std::make_shared<simulator::Generator>(
              simulator::GeneratorSettings{.serialNumber = serialNumber})) {}

    [[nodiscard]] std::string Address() const { return m_running.Address(); }
    void SetFrequency(double hertz) {
        const std::lock_guard lock(m_generator->Mutex());
        m_generator->Output().frequencyHz = hertz;
    }
    [[nodiscard]] double Frequency() {
        const std::lock_guard lock(m_generator->Mutex());
        return m_generator->Output().frequencyHz;
    }

 private:
    std::shared_ptr<simulator::Generator> m_generator;
    RunningGenerator m_running{m_generator};
};

class SavedStates : public ControlInDocuments {
 protected:
    // A bag with a state of 2 GHz, captured by the user of a control.
    MemoryPropertyBag Captured() {
        MemoryPropertyBag connected = BagFor(m_instrument.Address());
        const DocumentHost host(*m_office, From(connected));
        m_instrument.SetFrequency(2e9);
        SetupUser::SetUp(host.Control(), [](const SetupUser& user) {
            user.EnterName(L"two");
            user.Click(StateWindow::CaptureButton);
        });
        EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
        m_instrument.SetFrequency(1e9);
        return SavedBag(host);
    }
    // What the settings dialog of a control lists; the state in front goes to the instrument.
    static std::string RestoredFrom(const DocumentHost& host) {
        std::string seen;
        SetupUser::SetUp(host.Control(), [&](const SetupUser& user) {
            seen = user.States();
            user.Click(StateWindow::RestoreButton);
        });
        return seen;
    }

    Instrument m_instrument{"US00000001"};
};

TEST_F(SavedStates, ComeBackFromEachInterface) {
    MemoryPropertyBag bag = Captured();
    std::string names;
    for (const auto& [name, value] : bag.Entries()) {
        names += name.starts_with("io") ? "" : name + ' ';
    }
    EXPECT_EQ(names,
              "DataCWritten dataTransferSaved instrSetupInfoWritten instrSetupStates "
              "IOSettingWritten ");
    const auto stream = NewStream();
    const auto storage = NewStorage();
    {
        m_office.emplace();
        const DocumentHost host(*m_office, From(bag));
        EXPECT_EQ(host.Query<IPersistStreamInit>()->Save(stream.Get(), TRUE), S_OK);
        EXPECT_EQ(host.Query<IPersistStorage>()->Save(storage.Get(), FALSE), S_OK);
        EXPECT_EQ(host.Query<IPersistStorage>()->SaveCompleted(nullptr), S_OK);
    }
    GoToStart(*stream.Get());
    const DocumentHost::Loading loadings[] = {
        From(bag),
        [&](IUnknown* control) { return Query<IPersistStreamInit>(control)->Load(stream.Get()); },
        [&](IUnknown* control) { return Query<IPersistStorage>(control)->Load(storage.Get()); }};
    for (const auto& load : loadings) {
        m_office.emplace();
        m_instrument.SetFrequency(3e9);
        const DocumentHost host(*m_office, load);
        EXPECT_EQ(RestoredFrom(host), "[two]");
        EXPECT_EQ(m_instrument.Frequency(), 2e9);
        EXPECT_EQ(SavedBag(host).Entries(), bag.Entries());
    }
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
}

TEST_F(SavedStates, GoToTheInstrumentAloneThatTheyWereTakenFrom) {
    MemoryPropertyBag bag = Captured();
    Instrument other("us00000001");
    bag.Write("ioAddress", other.Address());
    m_office.emplace();
    const DocumentHost host(*m_office, From(bag));
    EXPECT_EQ(RestoredFrom(host), "[two]");
    EXPECT_EQ(Boxes.Texts(),
              std::vector<std::string>{"Cannot restore a state from an instrument with a different "
                                       "serial number than the current instrument."});
    EXPECT_EQ(other.Frequency(), 1e9);
    EXPECT_EQ(m_instrument.Frequency(), 1e9);
}

TEST_F(SavedStates, ThatWereAlteredAreGoneAndNothingIsConnected) {
    const MemoryPropertyBag bag = Captured();
    MemoryPropertyBag copy = bag;
    const ByteArray states = std::get<ByteArray>(copy.Read(StatesKey, ByteArray{}));
    ByteArray altered = states;
    altered.bytes[altered.bytes.size() / 2] ^= std::byte{1};
    ByteArray cut = states;
    cut.bytes.pop_back();
    ByteArray longer = states;
    longer.bytes.resize(std::size_t{1} << 20);
    const Value changes[] = {altered, cut,  longer,     ByteArray{}, std::string("states"),
                             5.0,     true, NullValue{}};
    for (const Value& change : changes) {
        MemoryPropertyBag changed = bag;
        changed.Write(StatesKey, change);
        m_office.emplace();
        const DocumentHost host(*m_office, From(changed));
        EXPECT_EQ(host.Loaded(), S_OK);
        ExpectUnconnected();
        EXPECT_EQ(RestoredFrom(host), "");
        EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
    }
    EXPECT_EQ(m_instrument.Frequency(), 1e9);
}

}  // namespace
}  // namespace krv::tests
