// Announcer: answers multicast DNS for the generator, to clients on this computer, since nobody
// else reaches it. Runs on the context of the generator's server, which outlives it.
#pragma once

#include <memory>

#include "suite/discovery/ServiceAnswers.h"
#include "suite/transport/Asio.h"

namespace krv::simulator {

class Announcer {
 public:
    // Throws Error when the port of multicast DNS can't be shared.
    Announcer(asio::io_context& context, const suite::ServedInstrument& instrument);
    Announcer(const Announcer&) = delete;
    Announcer& operator=(const Announcer&) = delete;

 private:
    asio::ip::udp::socket m_socket;
};

}  // namespace krv::simulator
