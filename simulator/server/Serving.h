// What the services of the generator's server share: ports of this computer, connections, waits.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

#include "suite/transport/Asio.h"
#include "suite/transport/Patience.h"

namespace krv::simulator {

// How often the server looks for what nobody tells it of.
inline constexpr std::chrono::milliseconds PollInterval{50};

// Listens on 127.0.0.1; 0 picks a free port. Throws Error.
void Listen(asio::ip::tcp::acceptor& acceptor, std::uint16_t port);
// The same for datagrams.
void Bind(asio::ip::udp::socket& socket, std::uint16_t port);

template <class Duration>
asio::awaitable<void> Wait(Duration duration) {
    if (duration > Duration::zero()) {
        asio::steady_timer timer(co_await asio::this_coro::executor, duration);
        co_await timer.async_wait(asio::use_awaitable);
    }
}

// Serves every connection that comes in on a strand of its own, for ever.
using ServeCall = std::function<asio::awaitable<void>(asio::ip::tcp::socket socket)>;
asio::awaitable<void> AcceptAll(asio::io_context& context, asio::ip::tcp::acceptor& acceptor,
                                ServeCall serve);

// The waits for one client. While it holds memory they have an end, also where it sends next to
// nothing or doesn't take its replies. The generator's own pauses don't count.
class ClientWaits {
 public:
    ClientWaits(asio::ip::tcp::socket& socket, std::function<bool()> holdsMemory,
                std::chrono::milliseconds stallLimit)
        : m_socket(socket),
          m_holdsMemory(std::move(holdsMemory)),
          m_stallLimit(stallLimit),
          m_patience(NewPatience()) {}

    // Returns how many bytes the transfer has moved.
    asio::awaitable<std::size_t> For(asio::awaitable<std::size_t> transfer);

 private:
    class Limit;
    using Clock = suite::Patience::Clock;

    [[nodiscard]] suite::Patience NewPatience() const {
        return {m_stallLimit, suite::Patience::LeastBytesPerSecond, m_waited};
    }

    asio::ip::tcp::socket& m_socket;
    std::function<bool()> m_holdsMemory;
    std::chrono::milliseconds m_stallLimit;
    Clock::time_point m_waited;
    suite::Patience m_patience;
};

}  // namespace krv::simulator
