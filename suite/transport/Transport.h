// Transport: a byte stream to an instrument and back. What carries it is an address's scheme:
// `tcp://host:port`, `serial://DEVICE`, `sim://MODEL`; further schemes are added to a
// TransportRegistry.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "ports/suite/InstrumentServer.h"

namespace krv::suite {

// The longest time without any progress, not the longest total time.
struct TimeOuts {
    std::chrono::milliseconds connect{5000};
    std::chrono::milliseconds inactivity{10000};
};

// One thread. After an operation has thrown the stream's place in the conversation is unknown: the
// owner closes it and opens a new one.
class Transport {
 public:
    virtual ~Transport() = default;
    // Sends everything, in as many pieces as the stream takes. Throws Error on time-out or when the
    // other side has gone.
    virtual void Send(std::span<const std::byte> bytes) = 0;
    // Waits for at least one byte; returns how many came. Throws Error on time-out or when the
    // other side has gone.
    virtual std::size_t Receive(std::span<std::byte> bytes) = 0;
    // How long the other side may take from now on; a transport that never waits ignores it.
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
    // Puts the interceptor between each later Open and its opener: it opens the transport by the
    // call that it is given, and may return another that stands before it.
    using OpenCall = std::function<std::unique_ptr<Transport>()>;
    using Interceptor =
        std::function<std::unique_ptr<Transport>(const std::string& address, const OpenCall& open)>;
    void InterceptOpening(Interceptor interceptor) { m_interceptor = std::move(interceptor); }
    // Throws Error when the address is not a usable one or has no known scheme, naming those that
    // there are.
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
