// The one place of the generator that knows Asio.
#include "simulator/server/GeneratorServer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "simulator/server/ClientLink.h"
#include "suite/transport/Asio.h"
#include "suite/transport/Patience.h"

namespace krv::simulator {
namespace {

using asio::ip::tcp;

constexpr std::size_t BufferBytes = std::size_t{512} << 10;
// How much the system takes in ahead of the generator. It is little, so that what is acknowledged
// to a client has almost been carried out; and less where a small bandwidth is simulated, since a
// client gets no acknowledgement while the generator works through a full buffer. With 64 KiB each
// end waits for the other so often that a download takes a third longer.
constexpr std::size_t ReceiveBufferBytes = std::size_t{256} << 10;
constexpr std::size_t LeastReceiveBufferBytes = std::size_t{4} << 10;
constexpr std::chrono::milliseconds PollInterval{50};
constexpr unsigned MaxThreads = 4;

template <class Duration>
asio::awaitable<void> Wait(Duration duration) {
    if (duration > Duration::zero()) {
        asio::steady_timer timer(co_await asio::this_coro::executor, duration);
        co_await timer.async_wait(asio::use_awaitable);
    }
}

// Ends the wait for a client when it takes longer than the limit. Runs on the connection's strand.
class WaitLimit {
 public:
    WaitLimit(tcp::socket& socket, const asio::any_io_executor& strand,
              asio::steady_timer::duration limit)
        : m_timer(strand, limit) {
        m_timer.async_wait([&socket, isOver = m_isOver](const std::error_code& ended) {
            std::error_code ignored;
            if (!ended && !*isOver) {
                socket.cancel(ignored);
            }
        });
    }
    WaitLimit(const WaitLimit&) = delete;
    WaitLimit& operator=(const WaitLimit&) = delete;
    ~WaitLimit() { *m_isOver = true; }

 private:
    std::shared_ptr<bool> m_isOver = std::make_shared<bool>(false);
    asio::steady_timer m_timer;
};

// The waits for one client. While it holds memory they have an end, also where it sends next to
// nothing or doesn't take its replies. The generator's own pauses don't count.
class ClientWaits {
 public:
    ClientWaits(tcp::socket& socket, const ClientLink& link, std::chrono::milliseconds stallLimit)
        : m_socket(socket), m_link(link), m_stallLimit(stallLimit), m_patience(NewPatience()) {}

    // Returns how many bytes the transfer has moved.
    asio::awaitable<std::size_t> For(asio::awaitable<std::size_t> transfer) {
        std::optional<WaitLimit> limit;
        if (m_link.HoldsMemory()) {
            limit.emplace(m_socket, co_await asio::this_coro::executor,
                          m_patience.End() - m_waited);
        } else {
            m_patience = NewPatience();
        }
        const auto start = Clock::now();
        const std::size_t moved = co_await std::move(transfer);
        m_waited += Clock::now() - start;
        m_patience.Moved(static_cast<std::int64_t>(moved), m_waited);
        co_return moved;
    }

 private:
    using Clock = suite::Patience::Clock;

    [[nodiscard]] suite::Patience NewPatience() const {
        return {m_stallLimit, suite::Patience::LeastBytesPerSecond, m_waited};
    }

    tcp::socket& m_socket;
    const ClientLink& m_link;
    std::chrono::milliseconds m_stallLimit;
    Clock::time_point m_waited;
    suite::Patience m_patience;
};

asio::awaitable<void> SendReplies(tcp::socket& socket, ClientLink& link, ClientWaits& waits) {
    while (const auto reply = link.NextReply()) {
        co_await Wait(reply->delay);
        co_await waits.For(
            asio::async_write(socket, asio::buffer(reply->text), asio::use_awaitable));
    }
}

asio::awaitable<void> Converse(tcp::socket& socket, ClientLink& link,
                               std::chrono::milliseconds stallLimit) {
    std::vector<std::byte> buffer(BufferBytes);
    ClientWaits waits(socket, link, stallLimit);
    while (true) {
        const std::size_t received = co_await waits.For(socket.async_read_some(
            asio::buffer(buffer.data(), link.PieceSize(buffer.size())), asio::use_awaitable));
        // The bandwidth may have become smaller while nothing came in.
        for (auto rest = std::span(buffer).first(received); !rest.empty();) {
            const auto piece = rest.first(link.PieceSize(rest.size()));
            const auto after = link.TakeIn(piece);
            if (after.disconnect) {
                co_return;
            }
            co_await Wait(after.pause);
            co_await SendReplies(socket, link, waits);
            rest = rest.subspan(piece.size());
        }
    }
}

asio::awaitable<void> Serve(tcp::socket socket, std::shared_ptr<Generator> generator) {
    try {
        const tcp::endpoint client = socket.remote_endpoint();
        const auto stallLimit = generator->Settings().stallLimit;
        ClientLink link(std::move(generator),
                        client.address().to_string() + ':' + std::to_string(client.port()));
        co_await Converse(socket, link, stallLimit);
    } catch (const std::exception&) {
        // The client has gone, or there is no memory to serve it: its connection ends.
    }
}

}  // namespace

class GeneratorServer::Implementation {
 public:
    Implementation(std::shared_ptr<Generator> generator, std::uint16_t port)
        : m_generator(std::move(generator)), m_acceptor(m_context) {
        Listen(port);
        // The strand keeps apart the two coroutines that use the acceptor.
        const auto strand = asio::make_strand(m_context);
        asio::co_spawn(strand, Accept(), asio::detached);
        asio::co_spawn(strand, WatchForChanges(), asio::detached);
    }

    [[nodiscard]] std::uint16_t Port() const { return m_acceptor.local_endpoint().port(); }

    void Run() {
        const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 2U, MaxThreads);
        std::vector<std::thread> others;
        for (unsigned count = 1; count < threads; ++count) {
            others.emplace_back([this] { m_context.run(); });
        }
        m_context.run();
        for (std::thread& other : others) {
            other.join();
        }
    }

    void Stop() noexcept { m_stopRequested = true; }

 private:
    void Listen(std::uint16_t port) {
        const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
        try {
            m_acceptor.open(endpoint.protocol());
#ifndef _WIN32
            // Lets a server that has ended start again at once. On Windows it would let two servers
            // share the port.
            m_acceptor.set_option(tcp::acceptor::reuse_address(true));
#endif
            FitReceiveBuffer();
            m_acceptor.bind(endpoint);
            m_acceptor.listen();
        } catch (const std::system_error& failure) {
            throw Error(ErrorNumber::Unspecified,
                        "Port " + std::to_string(port) +
                            " cannot be listened on: " + failure.code().message() + ".");
        }
    }

    asio::awaitable<void> Accept() {
        while (true) {
            std::error_code failure;
            tcp::socket socket = co_await m_acceptor.async_accept(
                asio::redirect_error(asio::use_awaitable, failure));
            if (failure) {
                // E.g. no descriptors left: clients that end give some back.
                co_await Wait(PollInterval);
                continue;
            }
            std::error_code ignored;
            socket.set_option(tcp::no_delay(true), ignored);
            asio::co_spawn(asio::make_strand(m_context), Serve(std::move(socket), m_generator),
                           asio::detached);
        }
    }

    // Sets the buffer of connections that are accepted from now on.
    void FitReceiveBuffer() {
        const std::size_t piece = m_generator->ActiveFaults().PieceSize(ReceiveBufferBytes);
        const std::size_t fitting =
            std::clamp(2 * piece, LeastReceiveBufferBytes, ReceiveBufferBytes);
        if (fitting != m_receiveBuffer) {
            std::error_code ignored;
            m_acceptor.set_option(asio::socket_base::receive_buffer_size(static_cast<int>(fitting)),
                                  ignored);
            m_receiveBuffer = fitting;
        }
    }

    // A signal handler may do no more than set a flag.
    asio::awaitable<void> WatchForChanges() {
        while (!m_stopRequested) {
            FitReceiveBuffer();
            co_await Wait(PollInterval);
        }
        m_context.stop();
    }

    std::shared_ptr<Generator> m_generator;
    std::atomic<bool> m_stopRequested{false};
    asio::io_context m_context;
    tcp::acceptor m_acceptor;
    std::size_t m_receiveBuffer = 0;
};

GeneratorServer::GeneratorServer(const GeneratorSettings& settings, std::uint16_t port)
    : GeneratorServer(std::make_shared<Generator>(settings), port) {}

GeneratorServer::GeneratorServer(std::shared_ptr<Generator> generator, std::uint16_t port)
    : m_implementation(std::make_unique<Implementation>(std::move(generator), port)) {}

GeneratorServer::~GeneratorServer() = default;

std::uint16_t GeneratorServer::Port() const {
    return m_implementation->Port();
}

void GeneratorServer::Run() {
    m_implementation->Run();
}

void GeneratorServer::Stop() noexcept {
    m_implementation->Stop();
}

}  // namespace krv::simulator
