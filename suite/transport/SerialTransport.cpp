#include <algorithm>
#include <chrono>
#include <optional>
#include <system_error>
#include <utility>

#include "suite/transport/Asio.h"
#include "suite/transport/LocalDevice.h"
#include "suite/transport/Patience.h"
#include "suite/transport/SerialAddress.h"
#include "suite/transport/Transport.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

using Option = asio::serial_port_base;

// How often a wait asks whether it shall end.
constexpr std::chrono::milliseconds SerialWatchInterval{100};

// Asio's error category doesn't map its codes to portable conditions; the system's does.
bool Means(const std::error_code& code, std::errc condition) {
    return std::system_category().default_error_condition(code.value()) == condition;
}

std::string ReasonOfSerial(const std::error_code& code) {
    if (Means(code, std::errc::no_such_file_or_directory)) {
        return "there is no such device";
    }
    return code.message();
}

// Every wait has a limit. When it has passed the line is closed, since it isn't known how much of
// what was sent the instrument still gets.
class SerialTransport final : public Transport, public ports::SerialSession {
 public:
    SerialTransport(const SerialAddress& address, std::string name, const TimeOuts& timeOuts)
        : m_name(std::move(name)), m_address(address), m_timeOuts(timeOuts), m_port(m_context) {
        std::error_code code;
        m_port.open(address.device, code);
        if (code) {
            throw ConnectError(m_name, ReasonOfSerial(code));
        }
        SetUp();
        // A break clears a device: a message that an earlier session left half-sent ends here, and
        // the first message isn't taken for the rest of a block.
        m_port.send_break(code);
    }

    void Send(std::span<const std::byte> bytes, MessagePart) override {
        Patience patience = NewPatience();
        while (!bytes.empty()) {
            const auto sent = Transferred(patience, [&](auto handler) {
                m_port.async_write_some(asio::buffer(bytes.data(), bytes.size()), handler);
            });
            if (!sent) {
                throw NotTakenError(m_name, m_timeOuts.inactivity);
            }
            patience.Moved(static_cast<std::int64_t>(*sent));
            bytes = bytes.subspan(*sent);
        }
    }

    std::size_t Receive(std::span<std::byte> bytes) override {
        const auto received = Transferred(NewPatience(), [&](auto handler) {
            m_port.async_read_some(asio::buffer(bytes.data(), bytes.size()), handler);
        });
        if (!received) {
            throw NoAnswerError(m_name, m_timeOuts.inactivity);
        }
        return *received;
    }

    void SetTimeOuts(const TimeOuts& timeOuts) override { m_timeOuts = timeOuts; }
    [[nodiscard]] std::string Kind() const override { return "RS-232"; }
    ports::SerialSession* Serial() override { return this; }

    std::int32_t BaudRate() override { return m_address.baudRate; }
    std::int32_t DataBits() override { return SerialAddress::DataBits; }
    std::int32_t StopBits() override { return static_cast<std::int32_t>(m_address.stopBits); }

 private:
    [[nodiscard]] Patience NewPatience() {
        return {m_timeOuts.inactivity, Patience::LeastRateOf(this)};
    }

    void SetUp() {
        using enum suite::StopBits;
        const auto stopBits = m_address.stopBits == One          ? Option::stop_bits::one
                              : m_address.stopBits == OneAndHalf ? Option::stop_bits::onepointfive
                                                                 : Option::stop_bits::two;
        const auto parity = m_address.parity == Parity::None  ? Option::parity::none
                            : m_address.parity == Parity::Odd ? Option::parity::odd
                                                              : Option::parity::even;
        Set(Option::baud_rate(static_cast<unsigned>(m_address.baudRate)), "baud rate");
        Set(Option::character_size(SerialAddress::DataBits), "data bits");
        Set(Option::stop_bits(stopBits), "stop bits");
        Set(Option::parity(parity), "parity");
        Set(Option::flow_control(m_address.hardwareFlow ? Option::flow_control::hardware
                                                        : Option::flow_control::none),
            "flow control");
    }

    template <class Setting>
    void Set(const Setting& setting, const char* what) {
        std::error_code code;
        m_port.set_option(setting, code);
        if (code) {
            throw ConnectError(m_name, std::string("the device refuses the ") + what);
        }
    }

    // Starts an operation and returns how many bytes it moved; nothing when it took too long.
    template <class Start>
    std::optional<std::size_t> Transferred(const Patience& patience, Start start) {
        std::optional<std::error_code> result;
        std::size_t count = 0;
        start([&](const std::error_code& code, std::size_t bytes) {
            result = code;
            count = bytes;
        });
        m_context.restart();
        while (!result && !patience.IsOver()) {
            m_context.run_until(
                std::min(patience.End(), Patience::Clock::now() + SerialWatchInterval));
            AskWatcher();
        }
        if (!result) {
            Abandon();
            return std::nullopt;
        }
        if (*result) {
            throw Failure(*result);
        }
        return count;
    }

    void AskWatcher() {
        if (m_timeOuts.watcher == nullptr) {
            return;
        }
        try {
            m_timeOuts.watcher->Waiting();
        } catch (...) {
            Abandon();
            throw;
        }
    }

    // Closes the line and runs what waits for it: no handler may run after its variables are gone.
    void Abandon() {
        std::error_code ignored;
        m_port.close(ignored);
        m_context.restart();
        m_context.run();
    }

    [[nodiscard]] Error Failure(const std::error_code& code) const {
        const bool gone = code == asio::error::eof || Means(code, std::errc::io_error);
        return gone ? ClosedError(m_name) : ConnectionError(m_name, code.message());
    }

    std::string m_name;
    SerialAddress m_address;
    TimeOuts m_timeOuts;
    asio::io_context m_context{1};
    asio::serial_port m_port;
};

}  // namespace

void AddSerialTransport(TransportRegistry& registry) {
    registry.Add("serial", [](const std::string& rest, const TimeOuts& timeOuts) {
        const SerialAddress parsed = ParseSerialAddress(rest);
        std::string address = "serial://" + rest;
        if (!IsLocalDevice(parsed.device)) {
            throw AddressError(address, "its device is a path that may lead to another computer");
        }
        return std::make_unique<SerialTransport>(parsed, std::move(address), timeOuts);
    });
}

}  // namespace krv::suite
