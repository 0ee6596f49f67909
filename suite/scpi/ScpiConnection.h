// ScpiConnection: one conversation of SCPI messages over a transport.
//
// One thread. Whenever an exchange fails (time-out, closed connection, a reply that can't be read)
// the transport is closed at once, since it isn't known how the instrument would take the next
// byte. From then on every call throws an Error that says why the connection was lost and what to
// do.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "suite/scpi/BlockWriter.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

class ScpiConnection {
 public:
    // What a block that is received may have; a longer one ends the connection.
    static constexpr std::size_t MaxBlockBytes = std::size_t{64} << 20;

    // Never connected.
    ScpiConnection() = default;
    ScpiConnection(std::unique_ptr<Transport> transport, std::string address, TimeOuts timeOuts);

    [[nodiscard]] bool IsOpen() const noexcept { return m_transport != nullptr; }
    // Throws Error when the connection is not open.
    void RequireOpen() const;
    [[nodiscard]] const std::string& Address() const noexcept { return m_address; }
    [[nodiscard]] std::string Kind() const;
    // Null where the connection isn't a serial line, or isn't open.
    [[nodiscard]] ports::SerialSession* Serial() const {
        return IsOpen() ? m_transport->Serial() : nullptr;
    }

    // Holds for later operations; does nothing when the connection isn't open.
    void SetTimeOuts(const TimeOuts& timeOuts);

    // Sends one message; the terminator is added.
    void Write(std::string_view message);
    // Sends one message and returns its reply without the terminator.
    [[nodiscard]] std::string Query(std::string_view message);
    // The next reply, to a message that has been written.
    [[nodiscard]] std::string ReceiveReply();
    // Waits until the instrument has a reply to what was written (true), or an error instead
    // (false). Nothing at once where the interface doesn't tell; the replies to several messages
    // may then be received one after the other.
    [[nodiscard]] std::optional<bool> AwaitReply();
    // Sends one message and returns the bytes of the definite-length block that answers it.
    [[nodiscard]] std::string QueryBlock(std::string_view message);
    // Sends one message whose last parameters are blocks of codes. Throws before anything is sent,
    // and leaves the connection open, when an array is too large.
    void WriteBlocks(std::string_view start, std::span<const std::span<const std::int16_t>> blocks);

    // Sends one message whose last parameter is a block of bytes.
    void WriteBytes(std::string_view start, std::span<const std::byte> bytes);

    // Returns the instrument to its front panel.
    void ReturnToLocal();
    // Closes the connection because the reply isn't one to the query, and throws Error.
    [[noreturn]] void RefuseReply(std::string_view query, std::string_view reply);
    void Disconnect() noexcept;

 private:
    template <class Work>
    auto Guarded(Work work);
    void Lose(const std::string& reason) noexcept;
    void SendText(std::string_view text, MessagePart part);
    void SendQuery(std::string_view message);
    // Receives what is there, at most so many bytes, behind what has been received.
    std::size_t ReceiveMore(std::span<char> buffer);
    // Receives up to the line's end, and returns the line without it and with "?" for the control
    // characters in it.
    [[nodiscard]] std::string ReceiveLine();
    // Receives until m_received holds so many bytes.
    void ReceiveAtLeast(std::size_t count);
    [[nodiscard]] std::string TakeReceived(std::size_t count);
    [[nodiscard]] std::size_t ReceiveBlockLength(std::string_view message);

    std::unique_ptr<Transport> m_transport;
    std::string m_address;
    TimeOuts m_timeOuts;
    // Why the connection isn't open any more; empty when the user closed it or never opened one.
    std::string m_lossReason;
    // Received behind the last complete reply.
    std::string m_received;
    // What was received last ended a message.
    bool m_receivedEnd = false;
    BlockWriter m_blockWriter;
};

}  // namespace krv::suite
