#include "simulator/server/Serving.h"

#include <memory>
#include <string>
#include <system_error>

#include "common/Error.h"

namespace krv::simulator {
namespace {

using asio::ip::tcp;
using asio::ip::udp;

Error PortError(std::uint16_t port, const std::system_error& failure) {
    return Error(ErrorNumber::Unspecified,
                 "Port " + std::to_string(port) +
                     " cannot be listened on: " + failure.code().message() + ".");
}

}  // namespace

void Listen(tcp::acceptor& acceptor, std::uint16_t port) {
    const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
    try {
        if (!acceptor.is_open()) {
            acceptor.open(endpoint.protocol());
        }
#ifndef _WIN32
        // Lets a server that has ended start again at once. On Windows it would let two servers
        // share the port.
        acceptor.set_option(tcp::acceptor::reuse_address(true));
#endif
        acceptor.bind(endpoint);
        acceptor.listen();
    } catch (const std::system_error& failure) {
        throw PortError(port, failure);
    }
}

void Bind(udp::socket& socket, std::uint16_t port) {
    const udp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
    try {
        socket.open(endpoint.protocol());
        socket.bind(endpoint);
    } catch (const std::system_error& failure) {
        throw PortError(port, failure);
    }
}

asio::awaitable<void> AcceptAll(asio::io_context& context, tcp::acceptor& acceptor,
                                ServeCall serve) {
    while (true) {
        std::error_code failure;
        tcp::socket socket =
            co_await acceptor.async_accept(asio::redirect_error(asio::use_awaitable, failure));
        if (failure) {
            // E.g. no descriptors left: clients that end give some back.
            co_await Wait(PollInterval);
            continue;
        }
        std::error_code ignored;
        socket.set_option(tcp::no_delay(true), ignored);
        asio::co_spawn(asio::make_strand(context), serve(std::move(socket)), asio::detached);
    }
}

// Ends the wait for a client when it takes longer than the limit. Runs on the connection's strand.
class ClientWaits::Limit {
 public:
    Limit(tcp::socket& socket, const asio::any_io_executor& strand,
          asio::steady_timer::duration limit)
        : m_timer(strand, limit) {
        m_timer.async_wait([&socket, isOver = m_isOver](const std::error_code& ended) {
            std::error_code ignored;
            if (!ended && !*isOver) {
                socket.cancel(ignored);
            }
        });
    }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    ~Limit() { *m_isOver = true; }

 private:
    std::shared_ptr<bool> m_isOver = std::make_shared<bool>(false);
    asio::steady_timer m_timer;
};

asio::awaitable<std::size_t> ClientWaits::For(asio::awaitable<std::size_t> transfer) {
    std::optional<Limit> limit;
    if (m_holdsMemory()) {
        limit.emplace(m_socket, co_await asio::this_coro::executor, m_patience.End() - m_waited);
    } else {
        m_patience = NewPatience();
    }
    const auto start = Clock::now();
    const std::size_t moved = co_await std::move(transfer);
    m_waited += Clock::now() - start;
    m_patience.Moved(static_cast<std::int64_t>(moved), m_waited);
    co_return moved;
}

}  // namespace krv::simulator
