// Transport: a byte stream to an instrument and back. The scheme of an address says what carries
// it: `tcp://HOST:PORT`, `serial://DEVICE`, `visa://RESOURCE`, `sim://MODEL`. A TransportRegistry
// knows the schemes. The name of a resource (ResourceName.h) needs none.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "ports/suite/InstrumentServer.h"

namespace krv::suite {

// Is asked several times a second while one waits for the other side.
class WaitWatcher {
 public:
    virtual ~WaitWatcher() = default;
    // Throws Error when the wait shall end; the connection is then closed.
    virtual void Waiting() = 0;
};

struct TimeOuts {
    // For looking up a computer's name and connecting to it, together. Only TCP uses it.
    std::chrono::milliseconds connect{5000};
    // For one wait without progress (see Patience.h). An instrument whose screen is being captured
    // by hand says nothing for some twenty seconds.
    std::chrono::milliseconds inactivity{30000};
    // For all of a block that the instrument sends. Over a line of 9600 baud a screen image of a
    // megabyte takes twenty minutes.
    std::chrono::milliseconds block = std::chrono::hours(1);
    // None, or one that outlives the transport. A simulated instrument in process asks none.
    WaitWatcher* watcher = nullptr;
};

// Where a piece stands in the message that it belongs to. The bytes themselves don't tell: a block
// may hold 0x0A, and its pieces may end with it.
enum class MessagePart : std::uint8_t { Inner, Last };

// One thread. After an operation has thrown it isn't known how far the conversation has come: the
// owner closes the stream and opens a new one.
class Transport {
 public:
    virtual ~Transport() = default;
    // Hands all bytes to the system, which may go on sending them afterwards. Throws Error when it
    // takes none, or next to none, for the length of a time-out, or when the other side has closed
    // the connection. The last part ends with 0x0A, and where the interface has a means of its own
    // to end a message, it asserts that with it and with no other part.
    virtual void Send(std::span<const std::byte> bytes, MessagePart part) = 0;
    // Waits for at least one byte, or for the end of a message alone, and returns how many it has
    // written to `bytes`. Throws Error on time-out, or when the other side has closed the
    // connection.
    virtual std::size_t Receive(std::span<std::byte> bytes) = 0;
    // The interface's own means has said that what was received last ends a message.
    [[nodiscard]] virtual bool HasReceivedEnd() const { return false; }
    // The instrument's status byte, asked for beside the conversation; nothing where the interface
    // has no means to. Where it has, a message makes the instrument discard the reply that hasn't
    // been received yet; elsewhere replies wait in their order.
    [[nodiscard]] virtual std::optional<std::uint8_t> StatusByte() { return std::nullopt; }
    // Returns the instrument to its front panel by the interface's own means; false where it has
    // none.
    virtual bool ReturnToLocal() { return false; }
    // Holds for later operations; a transport that never waits ignores it.
    virtual void SetTimeOuts(const TimeOuts& /*timeOuts*/) {}
    // E.g. "LAN": names the kind of connection in messages.
    [[nodiscard]] virtual std::string Kind() const = 0;
    // The settings of a serial line, owned by the transport; null where there is none.
    virtual ports::SerialSession* Serial() { return nullptr; }
};

// An address may come from a document: it is at most 255 bytes long, not empty and holds no control
// characters.
[[nodiscard]] bool IsUsableAddress(const std::string& address) noexcept;

class TransportRegistry {
 public:
    // Opens what stands behind "scheme://"; throws Error with a description that names the address.
    using Opener = std::function<std::unique_ptr<Transport>(const std::string& rest,
                                                            const TimeOuts& timeOuts)>;
    void Add(const std::string& scheme, Opener opener) { m_openers[scheme] = std::move(opener); }
    // Puts the interceptor between each later Open and its opener, in front of those that are
    // there. It opens the transport with the call that it is given, and returns that or another one
    // that wraps it.
    using OpenCall = std::function<std::unique_ptr<Transport>()>;
    using Interceptor =
        std::function<std::unique_ptr<Transport>(const std::string& address, const OpenCall& open)>;
    void InterceptOpening(Interceptor interceptor);
    // Throws Error when the address isn't usable or has no known scheme (the text lists the known
    // ones), and what the opener throws.
    [[nodiscard]] std::unique_ptr<Transport> Open(const std::string& address,
                                                  const TimeOuts& timeOuts) const;

 private:
    [[nodiscard]] std::unique_ptr<Transport> OpenByScheme(const std::string& address,
                                                          const TimeOuts& timeOuts) const;

    std::map<std::string, Opener> m_openers;
    Interceptor m_interceptor;
};

// Adds `tcp://host:port`.
void AddTcpTransport(TransportRegistry& registry);
// Adds `serial://DEVICE` (see SerialAddress.h).
void AddSerialTransport(TransportRegistry& registry);

}  // namespace krv::suite
