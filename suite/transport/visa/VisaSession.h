// VisaSession: one session to an instrument as the library has it. Each call may block as long as
// the library's time-outs let it. One thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "suite/transport/SerialAddress.h"
#include "suite/transport/visa/VisaApi.h"

namespace krv::suite {

class VisaSession {
 public:
    // The most bytes of one transfer.
    static constexpr std::size_t MostBytes = std::size_t{64} << 10;

    // What carries the bytes: these differ in how messages end.
    enum class Kind : std::uint8_t { Gpib, Usb, Lan, Stream, Serial };

    explicit VisaSession(const visa::Functions& functions) : m_functions(functions) {}
    // Closes what is open.
    ~VisaSession() { Close(); }
    VisaSession(const VisaSession&) = delete;
    VisaSession& operator=(const VisaSession&) = delete;

    // The line's settings are for a serial one; without them it keeps those that the library has
    // for it.
    [[nodiscard]] visa::Status Open(const std::string& name,
                                    const std::optional<SerialAddress>& line,
                                    std::chrono::milliseconds timeOut);
    // Moves at most MostBytes; `Count` tells how many went also when it fails. The end of a message
    // is asserted with the last byte.
    [[nodiscard]] visa::Status Write(std::span<const std::byte> bytes, bool endsMessage,
                                     std::chrono::milliseconds timeOut);
    [[nodiscard]] visa::Status Read(std::size_t most, std::chrono::milliseconds timeOut);
    [[nodiscard]] std::uint32_t Count() const noexcept { return m_count; }
    // What was read last.
    [[nodiscard]] std::span<const std::byte> Received() const noexcept {
        return std::span(m_buffer).first(m_count);
    }
    [[nodiscard]] visa::Status ReadStatusByte(std::uint8_t& status);
    [[nodiscard]] visa::Status GoToLocal();
    // Makes the instrument forget what it has and hasn't got so far.
    void Clear();
    void Close() noexcept;

    [[nodiscard]] Kind KindOfLink() const noexcept { return m_kind; }
    // Of a serial one.
    [[nodiscard]] const SerialAddress& Line() const noexcept { return m_line; }
    // What the library says of the failure.
    [[nodiscard]] std::string Describe(visa::Status failure);

 private:
    void FindOutKind();
    void SetUpEnds();
    void SetUpLine(const SerialAddress& line);
    void ReadLine();
    void Set(visa::Attribute attribute, visa::AttributeState value);
    void SetTimeOut(std::chrono::milliseconds timeOut);
    // Of an attribute of at most 32 bits; 0 where there is none.
    [[nodiscard]] std::uint32_t Get(visa::Attribute attribute);

    const visa::Functions m_functions;
    visa::Object m_manager = 0;
    visa::Object m_session = 0;
    Kind m_kind = Kind::Lan;
    SerialAddress m_line;
    std::uint32_t m_count = 0;
    std::vector<std::byte> m_buffer = std::vector<std::byte>(MostBytes);
    // What the library was told last.
    std::optional<bool> m_assertsEnd;
    std::optional<std::chrono::milliseconds> m_timeOut;
};

}  // namespace krv::suite
