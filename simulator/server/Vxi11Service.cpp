#include "simulator/server/Vxi11Service.h"

#include <array>
#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "simulator/server/Serving.h"
#include "simulator/vxi11/PortMapper.h"
#include "simulator/vxi11/RecordReader.h"
#include "simulator/vxi11/Vxi11Conversation.h"

namespace krv::simulator {
namespace {

using asio::ip::tcp;
using asio::ip::udp;

// Of VXI-11 and of the port mapper, each.
constexpr unsigned MostConnections = 64;
constexpr std::size_t RecordBufferBytes = std::size_t{64} << 10;
// A call to the port mapper is some 60 bytes.
constexpr std::size_t MostMapperBytes = 1024;
constexpr std::chrono::milliseconds CallPollInterval{5};

// A place among the connections that there may be.
class ConnectionPlace {
 public:
    explicit ConnectionPlace(std::shared_ptr<std::atomic<unsigned>> taken)
        : m_taken(std::move(taken)), m_isFree((*m_taken)++ < MostConnections) {}
    ~ConnectionPlace() { --*m_taken; }
    ConnectionPlace(const ConnectionPlace&) = delete;
    ConnectionPlace& operator=(const ConnectionPlace&) = delete;
    [[nodiscard]] bool IsFree() const noexcept { return m_isFree; }

 private:
    std::shared_ptr<std::atomic<unsigned>> m_taken;
    bool m_isFree;
};

// The reply to a record, empty when there is none to send; nothing when the connection ends.
using Reply = std::optional<std::string>;
using AnswerRecord = std::function<asio::awaitable<Reply>(std::span<const std::byte> record)>;

asio::awaitable<void> AnswerRecords(tcp::socket& socket, ClientWaits& waits, std::size_t most,
                                    AnswerRecord answer) {
    RecordReader records(most);
    std::vector<std::byte> buffer(RecordBufferBytes);
    while (true) {
        const std::size_t received =
            co_await waits.For(socket.async_read_some(asio::buffer(buffer), asio::use_awaitable));
        for (auto rest = std::span<const std::byte>(buffer).first(received); !rest.empty();) {
            rest = rest.subspan(records.Feed(rest));
            if (!records.IsComplete()) {
                continue;
            }
            const Reply reply = co_await answer(records.Record());
            if (!reply) {
                co_return;
            }
            if (!reply->empty()) {
                const std::string record = AsRecord(*reply);
                co_await waits.For(
                    asio::async_write(socket, asio::buffer(record), asio::use_awaitable));
            }
        }
    }
}

asio::awaitable<Reply> AnswerOnDevice(Vxi11Conversation& conversation,
                                      std::span<const std::byte> record) {
    const auto start = std::chrono::steady_clock::now();
    std::chrono::milliseconds waited{0};
    while (true) {
        CallReply reply = conversation.Answer(record, waited);
        const auto after = conversation.TakeAfter();
        co_await Wait(after.pause);
        if (after.disconnect) {
            co_return std::nullopt;
        }
        if (!reply.isWaiting) {
            co_return std::move(reply.message);
        }
        co_await Wait(CallPollInterval);
        waited = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - start);
    }
}

struct Device {
    std::shared_ptr<Generator> generator;
    std::shared_ptr<Vxi11Links> links = std::make_shared<Vxi11Links>();
    std::shared_ptr<std::atomic<unsigned>> connections = std::make_shared<std::atomic<unsigned>>();
};

asio::awaitable<void> ServeDevice(tcp::socket socket, Device device) {
    const ConnectionPlace place(device.connections);
    try {
        if (!place.IsFree()) {
            co_return;
        }
        const tcp::endpoint client = socket.remote_endpoint();
        const auto stallLimit = device.generator->Settings().stallLimit;
        Vxi11Conversation conversation(
            std::move(device.generator), std::move(device.links), socket.local_endpoint().port(),
            client.address().to_string() + ':' + std::to_string(client.port()) + " over VXI-11");
        ClientWaits waits(
            socket, [&conversation] { return conversation.HoldsMemory(); }, stallLimit);
        const AnswerRecord answer = [&conversation](std::span<const std::byte> record) {
            return AnswerOnDevice(conversation, record);
        };
        co_await AnswerRecords(socket, waits, Vxi11Conversation::MostRecordBytes, answer);
    } catch (const std::exception&) {
        // The client has gone or has sent what is no record, or there is no memory to serve it: its
        // connection ends.
    }
}

asio::awaitable<Reply> AnswerAtOnce(std::vector<RemoteProgram> mapper,
                                    std::span<const std::byte> record) {
    co_return AnswerCall(record, mapper).message;
}

asio::awaitable<void> ServeMapper(tcp::socket socket, std::vector<RemoteProgram> mapper,
                                  std::shared_ptr<std::atomic<unsigned>> connections,
                                  std::chrono::milliseconds stallLimit) {
    const ConnectionPlace place(std::move(connections));
    try {
        if (!place.IsFree()) {
            co_return;
        }
        // Nobody has a reason to stay.
        ClientWaits waits(
            socket, [] { return true; }, stallLimit);
        const AnswerRecord answer = [&mapper](std::span<const std::byte> record) {
            return AnswerAtOnce(mapper, record);
        };
        co_await AnswerRecords(socket, waits, MostMapperBytes, answer);
    } catch (const std::exception&) {
        // As above.
    }
}

asio::awaitable<void> AnswerDatagrams(udp::socket& socket, std::vector<RemoteProgram> mapper) {
    std::array<std::byte, MostMapperBytes> buffer{};
    while (true) {
        udp::endpoint client;
        std::error_code failure;
        const std::size_t received = co_await socket.async_receive_from(
            asio::buffer(buffer), client, asio::redirect_error(asio::use_awaitable, failure));
        if (failure) {
            // E.g. an earlier client has gone before its reply came.
            co_await Wait(PollInterval);
            continue;
        }
        const std::string reply = AnswerCall(std::span(buffer).first(received), mapper).message;
        if (!reply.empty()) {
            co_await socket.async_send_to(asio::buffer(reply), client,
                                          asio::redirect_error(asio::use_awaitable, failure));
        }
    }
}

}  // namespace

Vxi11Service::Vxi11Service(asio::io_context& context, std::shared_ptr<Generator> generator,
                           std::uint16_t mapperPort)
    : m_acceptor(asio::make_strand(context)),
      m_mapperAcceptor(asio::make_strand(context)),
      m_mapperSocket(asio::make_strand(context)) {
    Listen(m_acceptor, 0);
    Listen(m_mapperAcceptor, mapperPort);
    Bind(m_mapperSocket, MapperPort());
    m_mapper.push_back(PortMapper(Vxi11Programs(Port())));
    const auto stallLimit = generator->Settings().stallLimit;
    const ServeCall serveDevice = [device = Device{std::move(generator)}](tcp::socket socket) {
        return ServeDevice(std::move(socket), device);
    };
    const ServeCall serveMapper =
        [mapper = m_mapper, stallLimit,
         connections = std::make_shared<std::atomic<unsigned>>()](tcp::socket socket) {
            return ServeMapper(std::move(socket), mapper, connections, stallLimit);
        };
    asio::co_spawn(m_acceptor.get_executor(), AcceptAll(context, m_acceptor, serveDevice),
                   asio::detached);
    asio::co_spawn(m_mapperAcceptor.get_executor(),
                   AcceptAll(context, m_mapperAcceptor, serveMapper), asio::detached);
    asio::co_spawn(m_mapperSocket.get_executor(), AnswerDatagrams(m_mapperSocket, m_mapper),
                   asio::detached);
}

}  // namespace krv::simulator
