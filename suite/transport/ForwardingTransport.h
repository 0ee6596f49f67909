// ForwardingTransport: a transport that hands everything on to another one. Those that look on, or
// do something besides, override what they are about.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "suite/transport/Transport.h"

namespace krv::suite {

class ForwardingTransport : public Transport {
 public:
    explicit ForwardingTransport(std::unique_ptr<Transport> next) : m_next(std::move(next)) {}

    void Send(std::span<const std::byte> bytes, MessagePart part) override {
        m_next->Send(bytes, part);
    }
    std::size_t Receive(std::span<std::byte> bytes) override { return m_next->Receive(bytes); }
    [[nodiscard]] bool HasReceivedEnd() const override { return m_next->HasReceivedEnd(); }
    [[nodiscard]] std::optional<std::uint8_t> StatusByte() override { return m_next->StatusByte(); }
    bool ReturnToLocal() override { return m_next->ReturnToLocal(); }
    void SetTimeOuts(const TimeOuts& timeOuts) override { m_next->SetTimeOuts(timeOuts); }
    [[nodiscard]] std::string Kind() const override { return m_next->Kind(); }
    ports::SerialSession* Serial() override { return m_next->Serial(); }

 private:
    std::unique_ptr<Transport> m_next;
};

}  // namespace krv::suite
