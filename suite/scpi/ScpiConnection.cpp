#include "suite/scpi/ScpiConnection.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

#include "common/Text.h"
#include "suite/transport/Patience.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

// A catalogue of tens of thousands of waveforms fits.
constexpr std::size_t MaxReplyLength = std::size_t{1} << 20;

namespace StatusBit {
constexpr unsigned ErrorWaits = 1U << 2;
constexpr unsigned ReplyWaits = 1U << 4;
}  // namespace StatusBit

// The beginning of a reply, in characters that a message can show.
std::string Excerpt(std::string_view text) {
    std::string excerpt;
    for (const char character : text.substr(0, 60)) {
        excerpt += character >= ' ' && character <= '~' ? character : '?';
    }
    return text.size() > 60 ? excerpt + "..." : excerpt;
}

}  // namespace

ScpiConnection::ScpiConnection(std::unique_ptr<Transport> transport, std::string address,
                               TimeOuts timeOuts)
    : m_transport(std::move(transport)), m_address(std::move(address)), m_timeOuts(timeOuts) {}

void ScpiConnection::RequireOpen() const {
    if (IsOpen()) {
        return;
    }
    const std::string description =
        m_lossReason.empty() ? "No instrument is connected. Connect to an instrument first."
                             : "The connection was lost: " + m_lossReason +
                                   " Check the instrument, then connect to it again.";
    throw ServerError(description);
}

std::string ScpiConnection::Kind() const {
    RequireOpen();
    return m_transport->Kind();
}

void ScpiConnection::SetTimeOuts(const TimeOuts& timeOuts) {
    m_timeOuts = timeOuts;
    if (IsOpen()) {
        m_transport->SetTimeOuts(timeOuts);
    }
}

// Runs work that leaves the stream in an unknown state when it fails.
template <class Work>
auto ScpiConnection::Guarded(Work work) {
    RequireOpen();
    try {
        return work();
    } catch (const std::exception& failure) {
        Lose(failure.what());
        throw;
    }
}

void ScpiConnection::Lose(const std::string& reason) noexcept {
    m_transport.reset();
    m_received.clear();
    m_lossReason = reason;
}

void ScpiConnection::Disconnect() noexcept {
    Lose({});
}

void ScpiConnection::RefuseReply(std::string_view query, std::string_view reply) {
    const Error refusal = ConnectionError(
        m_address, "it answered \"" + Excerpt(reply) + "\" to \"" + std::string(query) + '"');
    Lose(refusal.Description());
    throw refusal;
}

void ScpiConnection::SendText(std::string_view text, MessagePart part) {
    m_receivedEnd = false;
    m_transport->Send(std::as_bytes(std::span(text)), part);
}

void ScpiConnection::Write(std::string_view message) {
    Guarded([&] { SendText(std::string(message) + '\n', MessagePart::Last); });
}

void ScpiConnection::SendQuery(std::string_view message) {
    if (!m_received.empty()) {
        throw ConnectionError(m_address, "it sent \"" + Excerpt(m_received) + "\" unasked");
    }
    SendText(std::string(message) + '\n', MessagePart::Last);
}

std::string ScpiConnection::Query(std::string_view message) {
    return Guarded([&] {
        SendQuery(message);
        return ReceiveLine();
    });
}

std::string ScpiConnection::ReceiveReply() {
    return Guarded([&] { return ReceiveLine(); });
}

std::optional<bool> ScpiConnection::AwaitReply() {
    constexpr std::chrono::milliseconds LongestPause{50};
    return Guarded([&]() -> std::optional<bool> {
        const auto deadline = std::chrono::steady_clock::now() + m_timeOuts.inactivity;
        for (std::chrono::milliseconds pause{1};; pause = std::min(2 * pause, LongestPause)) {
            const auto status = m_transport->StatusByte();
            if (!status || (*status & (StatusBit::ReplyWaits | StatusBit::ErrorWaits)) != 0) {
                return status ? std::optional((*status & StatusBit::ReplyWaits) != 0)
                              : std::nullopt;
            }
            if (std::chrono::steady_clock::now() > deadline) {
                throw NoAnswerError(m_address, m_timeOuts.inactivity);
            }
            std::this_thread::sleep_for(pause);
        }
    });
}

void ScpiConnection::ReturnToLocal() {
    Guarded([&] {
        if (!m_transport->ReturnToLocal()) {
            SendText("SYSTem:LOCal\n", MessagePart::Last);
        }
    });
}

std::string ScpiConnection::QueryBlock(std::string_view message) {
    return Guarded([&] {
        SendQuery(message);
        const std::size_t length = ReceiveBlockLength(message);
        ReceiveAtLeast(length);
        std::string block = TakeReceived(length);
        if (const std::string rest = ReceiveLine(); !rest.empty()) {
            RefuseReply(message, rest);
        }
        return block;
    });
}

std::size_t ScpiConnection::ReceiveBlockLength(std::string_view message) {
    using Progress = BlockHeaderReader::Progress;
    BlockHeaderReader reader;
    ReceiveAtLeast(2);
    if (m_received[0] != '#' || reader.Take(m_received[1]) == Progress::Malformed) {
        RefuseReply(message, ReceiveLine());
    }
    const std::size_t size = 2 + reader.DigitsLeft();
    ReceiveAtLeast(size);
    const std::string header = TakeReceived(size);
    auto progress = Progress::Unfinished;
    for (std::size_t at = 2; progress == Progress::Unfinished; ++at) {
        progress = reader.Take(header[at]);
    }
    if (progress == Progress::Malformed || reader.Length() > MaxBlockBytes) {
        RefuseReply(message, header);
    }
    return reader.Length();
}

// Each piece of a block has the transport's limit, which neither a trickle of bytes nor a block
// without end would ever reach.
void ScpiConnection::ReceiveAtLeast(std::size_t count) {
    std::array<char, 65536> buffer;
    Patience patience(m_timeOuts.inactivity, Patience::LeastRateOf(m_transport->Serial()));
    patience.EndBy(Patience::Clock::now() + m_timeOuts.block);
    while (m_received.size() < count) {
        if (patience.IsOver()) {
            throw TooSlowError(m_address);
        }
        patience.Moved(static_cast<std::int64_t>(ReceiveMore(buffer)));
    }
}

std::size_t ScpiConnection::ReceiveMore(std::span<char> buffer) {
    const std::size_t more = m_transport->Receive(std::as_writable_bytes(buffer));
    m_received.append(buffer.data(), more);
    // An end alone may be that of the reply before.
    m_receivedEnd = m_transport->HasReceivedEnd() && !m_received.empty();
    return more;
}

std::string ScpiConnection::TakeReceived(std::size_t count) {
    std::string taken = m_received.substr(0, count);
    m_received.erase(0, count);
    return taken;
}

// The time-out is for the whole line: an instrument that sends a byte now and then would otherwise
// keep its caller for hours. A line may also end with the message that it is in.
std::string ScpiConnection::ReceiveLine() {
    const auto deadline = std::chrono::steady_clock::now() + m_timeOuts.inactivity;
    std::array<char, 4096> buffer{};
    std::size_t end = m_received.find('\n');
    while (end == std::string::npos && !m_receivedEnd) {
        if (m_received.size() > MaxReplyLength) {
            throw ConnectionError(m_address, "its reply has no end");
        }
        const std::size_t searched = m_received.size();
        ReceiveMore(buffer);
        end = m_received.find('\n', searched);
        if (end == std::string::npos && !m_receivedEnd &&
            std::chrono::steady_clock::now() > deadline) {
            throw NoAnswerError(m_address, m_timeOuts.inactivity);
        }
    }
    std::string line = m_received.substr(0, end);
    m_received.erase(0, end == std::string::npos ? end : end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    // What a reply says is shown and kept in documents.
    return WithoutControlCharacters(line);
}

void ScpiConnection::WriteBlocks(std::string_view start,
                                 std::span<const std::span<const std::int16_t>> blocks) {
    RequireOpen();
    std::vector<std::string> headers;
    for (const auto& block : blocks) {
        headers.push_back((headers.empty() ? std::string(start) : ",") +
                          BlockWriter::Header(block.size()));
    }
    Guarded([&] {
        for (std::size_t index = 0; index < blocks.size(); ++index) {
            SendText(headers[index], MessagePart::Inner);
            m_blockWriter.SendCodes(*m_transport, blocks[index]);
        }
        SendText("\n", MessagePart::Last);
    });
}

void ScpiConnection::WriteBytes(std::string_view start, std::span<const std::byte> bytes) {
    Guarded([&] {
        SendText(std::string(start) + BlockHeader(bytes.size()), MessagePart::Inner);
        m_transport->Send(bytes, MessagePart::Inner);
        SendText("\n", MessagePart::Last);
    });
}

}  // namespace krv::suite
