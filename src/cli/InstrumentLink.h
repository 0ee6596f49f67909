// InstrumentLink: the front's connection to an instrument, and its log. The instrument is returned
// to front-panel operation at the end.
#pragma once

#include <memory>
#include <string>

#include "cli/Arguments.h"
#include "cli/TransferMeter.h"
#include "suite/log/ConversationLog.h"
#include "suite/scpi/ScpiInstrumentServer.h"

namespace krv::cli {

// TCP, serial lines, VISA, and simulated instruments in process. An empty name stands for the VISA
// library that is installed.
[[nodiscard]] suite::TransportRegistry KnownTransports(const std::string& visaLibrary);

// What an address as a user gives it stands for, with its scheme. Throws Error for what can't be
// one.
[[nodiscard]] std::string AddressWithScheme(const std::string& given);

// Null where none is asked for. Throws Error when it can't be written.
[[nodiscard]] std::shared_ptr<suite::ConversationLog> OpenLog(const ConnectionArguments& arguments);

class InstrumentLink {
 public:
    // Connects to the address; throws Error when that fails, or when the log can't be written. What
    // is sent is measured where there is a meter, and waits can be ended where there is a watcher;
    // both outlive the link. A log that is open already is shared with other links.
    explicit InstrumentLink(const ConnectionArguments& arguments, TransferMeter* meter = nullptr,
                            suite::WaitWatcher* watcher = nullptr,
                            std::shared_ptr<suite::ConversationLog> log = nullptr);
    ~InstrumentLink();
    InstrumentLink(const InstrumentLink&) = delete;
    InstrumentLink& operator=(const InstrumentLink&) = delete;

    [[nodiscard]] const std::shared_ptr<suite::ScpiInstrumentServer>& Server() const noexcept {
        return m_server;
    }
    // Returns the instrument to its front panel and disconnects. Throws Error when the log isn't
    // complete.
    void Finish();

 private:
    void ReturnToLocal() noexcept;

    std::string m_logFile;
    std::shared_ptr<suite::ConversationLog> m_log;
    std::shared_ptr<suite::ScpiInstrumentServer> m_server;
};

}  // namespace krv::cli
