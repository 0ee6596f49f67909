// Connection: the front's link to an instrument, given back to its front panel at the end.
#pragma once

#include <memory>
#include <string>

#include "cli/Arguments.h"
#include "suite/log/ConversationLog.h"
#include "suite/scpi/ScpiInstrumentServer.h"

namespace krv::cli {

// Every way to an instrument that the front knows.
[[nodiscard]] suite::TransportRegistry KnownTransports();

class Connection {
 public:
    // Connects to the address; throws Error when that fails, or when the log can't be written.
    explicit Connection(const ConnectionArguments& arguments);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] const std::shared_ptr<suite::ScpiInstrumentServer>& Server() const noexcept {
        return m_server;
    }
    // Gives the instrument back and throws Error when something is missing in the log.
    void Finish();

 private:
    void ReturnToLocal() noexcept;

    std::string m_logFile;
    std::shared_ptr<suite::ConversationLog> m_log;
    std::shared_ptr<suite::ScpiInstrumentServer> m_server;
};

}  // namespace krv::cli
