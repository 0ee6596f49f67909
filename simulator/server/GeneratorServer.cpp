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

#include "simulator/commands/ClientLink.h"
#include "simulator/server/Announcer.h"
#include "simulator/server/Serving.h"
#include "simulator/server/Vxi11Service.h"
#include "suite/discovery/NetworkServices.h"
#include "suite/transport/Asio.h"

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
constexpr unsigned MaxThreads = 4;

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
    ClientWaits waits(
        socket, [&link] { return link.HoldsMemory(); }, stallLimit);
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
        m_acceptor.open(tcp::v4());
        FitReceiveBuffer();
        Listen(m_acceptor, port);
        // The strand keeps apart the two coroutines that use the acceptor.
        const auto strand = asio::make_strand(m_context);
        const auto serve = [own = m_generator](tcp::socket socket) {
            return Serve(std::move(socket), own);
        };
        asio::co_spawn(strand, AcceptAll(m_context, m_acceptor, serve), asio::detached);
        asio::co_spawn(strand, WatchForChanges(), asio::detached);
    }

    void ServeVxi11(std::uint16_t mapperPort) {
        m_vxi11.emplace(m_context, m_generator, mapperPort);
    }

    void Announce() {
        const GeneratorSettings& settings = m_generator->Settings();
        suite::ServedInstrument instrument{MakerName,
                                           settings.model,
                                           settings.serialNumber.value(),
                                           settings.firmware,
                                           asio::ip::address_v4::loopback().to_bytes(),
                                           {{suite::ScpiService, Port()}}};
        if (m_vxi11) {
            instrument.services.push_back({suite::Vxi11Service, m_vxi11->MapperPort()});
        }
        m_announcer.emplace(m_context, instrument);
    }

    [[nodiscard]] std::uint16_t Port() const { return m_acceptor.local_endpoint().port(); }
    [[nodiscard]] const Vxi11Service& Vxi11() const { return m_vxi11.value(); }

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
    std::optional<Vxi11Service> m_vxi11;
    std::optional<Announcer> m_announcer;
};

GeneratorServer::GeneratorServer(const GeneratorSettings& settings, std::uint16_t port)
    : GeneratorServer(std::make_shared<Generator>(settings), port) {}

GeneratorServer::GeneratorServer(std::shared_ptr<Generator> generator, std::uint16_t port)
    : m_implementation(std::make_unique<Implementation>(std::move(generator), port)) {}

GeneratorServer::~GeneratorServer() = default;

std::uint16_t GeneratorServer::Port() const {
    return m_implementation->Port();
}

void GeneratorServer::ServeVxi11(std::uint16_t mapperPort) {
    m_implementation->ServeVxi11(mapperPort);
}

std::uint16_t GeneratorServer::Vxi11Port() const {
    return m_implementation->Vxi11().Port();
}

std::uint16_t GeneratorServer::MapperPort() const {
    return m_implementation->Vxi11().MapperPort();
}

void GeneratorServer::Announce() {
    m_implementation->Announce();
}

void GeneratorServer::Run() {
    m_implementation->Run();
}

void GeneratorServer::Stop() noexcept {
    m_implementation->Stop();
}

}  // namespace krv::simulator
