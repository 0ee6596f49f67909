// Every wait is for the socket to be ready, and has a limit. The limit moves on whenever the other
// side's system acknowledges bytes that this one still holds (Outstanding.h), so that a slow line
// doesn't count as a dead one. An acknowledgement says nothing of what the instrument has read.
#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <vector>

#include "suite/transport/Asio.h"
#include "suite/transport/Detached.h"
#include "suite/transport/KeepAlive.h"
#include "suite/transport/Outstanding.h"
#include "suite/transport/Patience.h"
#include "suite/transport/TcpAddress.h"
#include "suite/transport/Transport.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

using asio::ip::tcp;
using std::chrono::milliseconds;

// How often a wait looks whether more bytes have been acknowledged, and whether it shall end.
constexpr milliseconds PollInterval{100};

Patience::Clock::time_point NextPoll(Patience::Clock::time_point end) {
    return std::min(end, Patience::Clock::now() + PollInterval);
}

void Ask(WaitWatcher* watcher) {
    if (watcher != nullptr) {
        watcher->Waiting();
    }
}

// The system's send buffer. Send returns as soon as the last byte is in it, and the wait for the
// reply then includes the time in which it empties: where the system doesn't report
// acknowledgements, a full buffer must be gone within the time-out. Measured over the loopback
// interface against plain sends: 64 KiB 0.8 of their speed, 128 KiB 1.4, larger buffers no more.
constexpr int SendBufferBytes = 128 << 10;

std::string ReasonOfTcp(const std::error_code& code) {
    if (code == asio::error::connection_refused) {
        return "nothing accepts connections there, or another program holds its only one";
    }
    if (code == asio::error::host_not_found || code == asio::error::host_not_found_try_again) {
        return "the host's name is not known";
    }
    return code.message();
}

struct Resolved {
    std::error_code code;
    std::vector<tcp::endpoint> endpoints;
};

// The system's name look-up can't be interrupted, so that it runs on a thread of its own. A look-up
// that takes too long is left to itself.
Resolved LookUp(const TcpAddress& address, const TimeOuts& timeOuts) {
    const auto promise = std::make_shared<std::promise<Resolved>>();
    auto future = promise->get_future();
    RunDetached([promise, address] {
        Resolved resolved;
        asio::io_context context;
        for (const auto& entry : tcp::resolver(context).resolve(
                 address.computer, std::to_string(address.port), resolved.code)) {
            resolved.endpoints.push_back(entry.endpoint());
        }
        promise->set_value(std::move(resolved));
    });
    const auto deadline = Patience::Clock::now() + timeOuts.connect;
    while (future.wait_until(NextPoll(deadline)) != std::future_status::ready) {
        Ask(timeOuts.watcher);
        if (Patience::Clock::now() >= deadline) {
            return {asio::error::timed_out, {}};
        }
    }
    return future.get();
}

Resolved Resolve(const TcpAddress& address, const TimeOuts& timeOuts) {
    std::error_code code;
    const auto literal = asio::ip::make_address(address.computer, code);
    if (!code) {
        return {{}, {tcp::endpoint(literal, address.port)}};
    }
    return LookUp(address, timeOuts);
}

// The socket doesn't block once it is connected.
class TcpTransport final : public Transport {
 public:
    TcpTransport(const TcpAddress& address, const TimeOuts& timeOuts)
        : m_name(address.Text()), m_timeOuts(timeOuts), m_socket(m_context) {
        Connect(address);
        m_socket.non_blocking(true);
        std::error_code ignored;
        m_socket.set_option(tcp::no_delay(true), ignored);
        m_socket.set_option(asio::socket_base::send_buffer_size(SendBufferBytes), ignored);
        KeepAlive(m_socket);
    }

    // Bytes count when this system takes them and again when the other one has them, since not
    // every system reports the latter.
    void Send(std::span<const std::byte> bytes, MessagePart) override {
        Patience patience = NewPatience();
        while (!bytes.empty()) {
            std::error_code code;
            const std::size_t sent =
                m_socket.write_some(asio::buffer(bytes.data(), bytes.size()), code);
            bytes = bytes.subspan(sent);
            if (sent > 0) {
                patience.Moved(static_cast<std::int64_t>(sent));
            }
            if (code == asio::error::would_block) {
                if (!WaitUntil(tcp::socket::wait_write, patience)) {
                    throw NotTakenError(m_name, m_timeOuts.inactivity);
                }
            } else if (code) {
                throw Failure(code);
            }
        }
    }

    std::size_t Receive(std::span<std::byte> bytes) override {
        Patience patience = NewPatience();
        while (true) {
            std::error_code code;
            const std::size_t received =
                m_socket.read_some(asio::buffer(bytes.data(), bytes.size()), code);
            if (!code) {
                m_isServed = true;
                return received;
            }
            if (code != asio::error::would_block) {
                throw Failure(code);
            }
            if (!WaitUntil(tcp::socket::wait_read, patience)) {
                throw m_isServed ? NoAnswerError(m_name, m_timeOuts.inactivity)
                                 : NotServedError(NoAnswerError(m_name, m_timeOuts.inactivity));
            }
        }
    }

    void SetTimeOuts(const TimeOuts& timeOuts) override { m_timeOuts = timeOuts; }
    [[nodiscard]] std::string Kind() const override { return "LAN"; }

 private:
    void Connect(const TcpAddress& address) {
        const auto deadline = std::chrono::steady_clock::now() + m_timeOuts.connect;
        const Resolved resolved = Resolve(address, m_timeOuts);
        std::optional<std::error_code> result;
        if (resolved.code) {
            result = resolved.code;
        } else {
            asio::async_connect(
                m_socket, resolved.endpoints,
                [&result](const std::error_code& code, const tcp::endpoint&) { result = code; });
            while (!result && Patience::Clock::now() < deadline) {
                m_context.run_until(NextPoll(deadline));
                AskWatcher();
            }
        }
        if (!result || *result == asio::error::timed_out) {
            Abandon();
            throw ConnectError(m_name, "no answer within " + SecondsText(m_timeOuts.connect));
        }
        if (*result) {
            throw ConnectError(m_name, ReasonOfTcp(*result));
        }
    }

    [[nodiscard]] Patience NewPatience() const {
        return {m_timeOuts.inactivity, Patience::LeastBytesPerSecond};
    }

    // True when the socket is ready or has failed. False when the patience is over; the socket is
    // then closed.
    bool WaitUntil(tcp::socket::wait_type what, Patience& patience) {
        bool ready = false;
        m_socket.async_wait(what, [&ready](const std::error_code&) { ready = true; });
        m_context.restart();
        std::int64_t outstanding = OutstandingBytes(m_socket);
        while (!ready && !patience.IsOver()) {
            m_context.run_until(NextPoll(patience.End()));
            const std::int64_t left = OutstandingBytes(m_socket);
            if (left < outstanding) {
                patience.Moved(outstanding - left);
            }
            outstanding = left;
            if (!ready) {
                AskWatcher();
            }
        }
        if (!ready) {
            Abandon();
            return false;
        }
        return true;
    }

    void AskWatcher() {
        try {
            Ask(m_timeOuts.watcher);
        } catch (...) {
            Abandon();
            throw;
        }
    }

    // Closes the socket and runs what waits for it: no handler may run after its variables are
    // gone.
    void Abandon() {
        std::error_code ignored;
        m_socket.close(ignored);
        m_context.restart();
        m_context.run();
    }

    Error Failure(const std::error_code& code) const {
        const bool closed = code == asio::error::eof || code == asio::error::connection_reset ||
                            code == asio::error::connection_aborted ||
                            code == asio::error::broken_pipe;
        if (!closed) {
            return ConnectionError(m_name, code.message());
        }
        return m_isServed ? ClosedError(m_name) : NotServedError(ClosedError(m_name));
    }

    std::string m_name;
    TimeOuts m_timeOuts;
    asio::io_context m_context{1};
    tcp::socket m_socket;
    // The instrument has answered something.
    bool m_isServed = false;
};

}  // namespace

void AddTcpTransport(TransportRegistry& registry) {
    registry.Add("tcp", [](const std::string& rest, const TimeOuts& timeOuts) {
        return std::make_unique<TcpTransport>(ParseTcpAddress(rest), timeOuts);
    });
}

}  // namespace krv::suite
