#include "benchmarks/LoopbackSink.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>
#include <thread>
#include <vector>

#include "suite/transport/Asio.h"

#include <asio/read.hpp>

namespace krv::benchmarks {
namespace {

using asio::ip::tcp;

constexpr std::size_t PieceBytes = std::size_t{1} << 20;
constexpr std::string_view EndOfData = "*OPC?\n";

// The last bytes of a stream, as many as its end mark has.
class StreamTail {
 public:
    void Add(std::string_view bytes) {
        m_tail.append(bytes.substr(bytes.size() - std::min(bytes.size(), EndOfData.size())));
        m_tail.erase(0, m_tail.size() - std::min(m_tail.size(), EndOfData.size()));
    }
    [[nodiscard]] bool IsEnd() const { return m_tail == EndOfData; }

 private:
    std::string m_tail;
};

}  // namespace

class LoopbackSink::Implementation {
 public:
    Implementation()
        : m_acceptor(m_context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)),
          m_thread([this] { Serve(); }) {}
    ~Implementation() {
        // A client that has nothing to send ends the wait for one.
        m_stop = true;
        std::error_code ignored;
        tcp::socket(m_context).connect(m_acceptor.local_endpoint(), ignored);
        m_thread.join();
    }
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    [[nodiscard]] tcp::endpoint Endpoint() const { return m_acceptor.local_endpoint(); }

 private:
    void Serve() {
        while (!m_stop) {
            tcp::socket socket = m_acceptor.accept();
            socket.set_option(tcp::no_delay(true));
            TakeIn(socket);
        }
    }

    void TakeIn(tcp::socket& socket) {
        std::vector<char> buffer(PieceBytes);
        StreamTail tail;
        std::error_code code;
        while (!code) {
            const std::size_t count = socket.read_some(asio::buffer(buffer), code);
            tail.Add({buffer.data(), count});
            if (tail.IsEnd()) {
                asio::write(socket, asio::buffer("1\n", 2), code);
            }
        }
    }

    asio::io_context m_context;
    tcp::acceptor m_acceptor;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

LoopbackSink::LoopbackSink() : m_implementation(std::make_unique<Implementation>()) {}
LoopbackSink::~LoopbackSink() = default;

std::string LoopbackSink::Address() const {
    return "tcp://127.0.0.1:" + std::to_string(Port());
}

std::uint16_t LoopbackSink::Port() const {
    return m_implementation->Endpoint().port();
}

class PlainSender::Implementation {
 public:
    explicit Implementation(std::uint16_t port) : m_socket(m_context) {
        m_socket.connect(tcp::endpoint(asio::ip::address_v4::loopback(), port));
        m_socket.set_option(tcp::no_delay(true));
    }

    void Send(std::span<const std::byte> bytes) {
        while (!bytes.empty()) {
            const auto piece = bytes.first(std::min(bytes.size(), PieceBytes));
            asio::write(m_socket, asio::buffer(piece.data(), piece.size()));
            bytes = bytes.subspan(piece.size());
        }
        asio::write(m_socket, asio::buffer(EndOfData.data(), EndOfData.size()));
        std::array<char, 2> answer{};
        asio::read(m_socket, asio::buffer(answer));
    }

 private:
    asio::io_context m_context;
    tcp::socket m_socket;
};

PlainSender::PlainSender(const LoopbackSink& sink)
    : m_implementation(std::make_unique<Implementation>(sink.Port())) {}
PlainSender::~PlainSender() = default;

void PlainSender::Send(std::span<const std::byte> bytes) {
    m_implementation->Send(bytes);
}

}  // namespace krv::benchmarks
