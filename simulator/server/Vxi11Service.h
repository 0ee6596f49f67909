// Vxi11Service: the generator over VXI-11, at a free port of this computer, and a port mapper that
// tells clients which. Runs on the context of the generator's server, which outlives it.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "simulator/device/Generator.h"
#include "simulator/vxi11/RemoteCall.h"
#include "simulator/vxi11/Vxi11Links.h"
#include "suite/transport/Asio.h"

namespace krv::simulator {

class Vxi11Service {
 public:
    // Port 0 picks a free one for the port mapper. Throws Error when a port can't be listened on.
    Vxi11Service(asio::io_context& context, std::shared_ptr<Generator> generator,
                 std::uint16_t mapperPort);
    Vxi11Service(const Vxi11Service&) = delete;
    Vxi11Service& operator=(const Vxi11Service&) = delete;

    [[nodiscard]] std::uint16_t Port() const { return m_acceptor.local_endpoint().port(); }
    [[nodiscard]] std::uint16_t MapperPort() const {
        return m_mapperAcceptor.local_endpoint().port();
    }

 private:
    asio::ip::tcp::acceptor m_acceptor;
    asio::ip::tcp::acceptor m_mapperAcceptor;
    asio::ip::udp::socket m_mapperSocket;
    std::vector<RemoteProgram> m_mapper;
};

}  // namespace krv::simulator
