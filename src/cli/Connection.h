// Connection: the front's link to an instrument, given back to its front panel at the end.
#pragma once

#include <memory>
#include <string>

#include "suite/ScpiInstrumentServer.h"

namespace krv::cli {

class Connection {
 public:
    // Connects to a `tcp://` or `sim://` address; throws Error when that fails.
    explicit Connection(const std::string& address);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] const std::shared_ptr<server::ScpiInstrumentServer>& Server() const noexcept {
        return m_server;
    }

 private:
    std::shared_ptr<server::ScpiInstrumentServer> m_server;
};

}  // namespace krv::cli
