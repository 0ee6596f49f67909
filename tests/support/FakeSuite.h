// FakeSuite: the suite's components as the control sees them, with one log for all of them.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "ports/suite/SuiteComponents.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeServer.h"

namespace krv::tests {

class FakeSession final : public ports::IoSession, public ports::SerialSession {
 public:
    FakeSession(CallLog& log, std::string address, bool isSerial = false)
        : m_log(log), m_address(std::move(address)), m_isSerial(isSerial) {}

    std::string Address() override { return m_address; }
    bool IsAlive() override { return Alive; }
    std::string ConnectionKind() override { return m_isSerial ? "RS-232" : "GPIB"; }
    ports::SerialSession* Serial() override {
        if (SerialTestFails) {
            throw Error(430, "Class does not support Automation");
        }
        return m_isSerial ? this : nullptr;
    }
    void ReturnToLocal() override { m_log.Note("local " + m_address); }
    std::int32_t BaudRate() override { return 19200; }
    std::int32_t DataBits() override { return 8; }
    std::int32_t StopBits() override { return 1; }

    // The instrument is there; a session whose instrument has gone never gets it back.
    bool Alive = true;
    bool SerialTestFails = false;

 private:
    CallLog& m_log;
    std::string m_address;
    bool m_isSerial;
};

class FakeRS232Config final : public ports::RS232Config {
 public:
    explicit FakeRS232Config(CallLog& log) : m_log(log) {}
    void SetPortCode(std::int32_t port) override { m_log.Note("port " + std::to_string(port)); }
    void SetBaudRate(std::int32_t rate) override { m_log.Note("baud " + std::to_string(rate)); }
    void SetDataBits(std::int32_t bits) override { m_log.Note("bits " + std::to_string(bits)); }
    void SetHandshakeCode(std::int32_t handshake) override {
        m_log.Note("handshake " + std::to_string(handshake));
    }

 private:
    CallLog& m_log;
};

class FakeIOSettings final : public ports::IOSettings {
 public:
    explicit FakeIOSettings(CallLog& log, bool instrumentIsThere = true)
        : m_log(log), m_instrumentIsThere(instrumentIsThere) {}

    std::shared_ptr<ports::IoSession> Chosen;
    std::string Host = "My Computer";

    void SetInstrumentType(const std::string& type) override { m_log.Note("type " + type); }
    void AddSupportedInstrument(const std::string& model, const std::string& key) override {
        m_log.Note("supports " + key + '=' + model);
    }
    void AddInterfaceConfiguration(const std::shared_ptr<ports::InterfaceConfiguration>&,
                                   const std::string& key) override {
        m_log.Note("configures " + key);
    }
    std::shared_ptr<ports::IoSession> IO() override { return Chosen; }
    void SetIO(const std::shared_ptr<ports::IoSession>& session) override {
        m_log.Note("settings' session " + (session ? session->Address() : std::string("none")));
        Chosen = session;
    }
    std::string HostName() override { return Host; }
    void WriteProperties(PropertyBag& bag) override {
        m_log.Note("settings write");
        bag.Write("settings.host", Host);
        bag.Write("settings.address", Chosen ? Chosen->Address() : std::string());
    }
    void ReadProperties(PropertyBag& bag) override {
        m_log.Note("settings read");
        const std::string host = bag.ReadText("settings.host", "My Computer");
        const std::string address = bag.ReadText("settings.address", "");
        Host = host;
        const auto session = std::make_shared<FakeSession>(m_log, address);
        session->Alive = m_instrumentIsThere;
        Chosen = address.empty() ? nullptr : session;
    }

 private:
    CallLog& m_log;
    bool m_instrumentIsThere;
};

// A list of one state, which the test captures and restores in the state control's place.
class FakeStateInfo final : public ports::StateInfo {
 public:
    explicit FakeStateInfo(CallLog& log) : m_log(log) {}

    ports::SetupInterface* Setup = nullptr;
    Value Snapshot;

    void SetSetupInterface(ports::SetupInterface* setup) override {
        m_log.Note(setup != nullptr ? "give setup" : "take setup back");
        Setup = setup;
    }
    void WriteProperties(PropertyBag& bag) override {
        m_log.Note("write states");
        bag.Write("States", Snapshot);
    }
    void ReadProperties(PropertyBag& bag) override {
        m_log.Note("read states");
        Snapshot = bag.Read("States", EmptyValue{});
    }

 private:
    CallLog& m_log;
};

class FakeInstrumentState final : public ports::InstrumentState {
 public:
    explicit FakeInstrumentState(CallLog& log) : m_log(log) {}
    void SetStateInfo(const std::shared_ptr<ports::StateInfo>& info) override {
        m_log.Note("show states");
        Info = info;
    }

    std::shared_ptr<ports::StateInfo> Info;

 private:
    CallLog& m_log;
};

class FakeDocument final : public ports::HostDocument {};

class FakeUtilities final : public ports::VCUtilities {
 public:
    explicit FakeUtilities(std::shared_ptr<ports::HostDocument> document)
        : m_document(std::move(document)) {}
    static constexpr ports::WindowHandle TopWindow = 4711;
    ports::WindowHandle TopLevelWindow(ports::ControlSurface&) override { return TopWindow; }
    std::shared_ptr<ports::HostDocument> ContainingDocument(ports::ControlSurface&) override {
        return m_document;
    }

 private:
    std::shared_ptr<ports::HostDocument> m_document;
};

class FakeSuite final : public ports::SuiteComponents {
 public:
    explicit FakeSuite(CallLog& log) : m_log(log) {
        Server->Log = &log;
        Server->Connected = false;
        Server->Firmware = "C.01.00";
    }

    // The server that will be created, so that a test can set it up.
    std::shared_ptr<FakeServer> Server = FakeServer::Make();
    // Created in its place, where there is one.
    std::shared_ptr<ports::KRVServer> OtherServer;
    std::shared_ptr<FakeIOSettings> LastSettings;
    std::shared_ptr<FakeStateInfo> LastStates;
    std::shared_ptr<ports::HostDocument> Document = std::make_shared<FakeDocument>();

    // Whether settings that are read find their instrument.
    bool InstrumentIsThere = true;
    // The ProgID of a component that isn't installed.
    std::string Missing;

    std::shared_ptr<ports::KRVServer> CreateServer() override {
        if (Missing == ports::ProgId::KRVServer) {
            throw Error(ErrorNumber::CannotCreateObject, "install " + Missing);
        }
        m_log.Note("create server");
        return OtherServer ? OtherServer : Server;
    }
    std::shared_ptr<ports::IOSettings> CreateIOSettings() override {
        m_log.Note("create settings");
        return LastSettings = std::make_shared<FakeIOSettings>(m_log, InstrumentIsThere);
    }
    std::shared_ptr<ports::StateInfo> CreateStateInfo() override {
        m_log.Note("create states");
        return LastStates = std::make_shared<FakeStateInfo>(m_log);
    }
    std::shared_ptr<ports::RS232Config> CreateRS232Config() override {
        return std::make_shared<FakeRS232Config>(m_log);
    }
    std::shared_ptr<ports::VCUtilities> CreateUtilities() override {
        m_log.Note("create utilities");
        return std::make_shared<FakeUtilities>(Document);
    }

 private:
    CallLog& m_log;
};

class FakeSurface final : public ports::ControlSurface {
 public:
    explicit FakeSurface(CallLog& log) : m_log(log) {}
    void SetBusyPointer(bool isBusy) override {
        m_log.Note(isBusy ? "busy pointer" : "normal pointer");
    }
    ports::DeviceContext ContextHandle() override { return 77; }
    std::shared_ptr<void> KeepAlive() override { return m_life; }
    [[nodiscard]] bool IsKept() const { return m_life.use_count() > 1; }

 private:
    CallLog& m_log;
    std::shared_ptr<int> m_life = std::make_shared<int>();
};

}  // namespace krv::tests
