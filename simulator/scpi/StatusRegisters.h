// StatusRegisters: the standard event register, the registers that enable events, and the status
// byte that they and the queues sum up to.
#pragma once

#include <cstdint>

namespace krv::simulator {

class StatusRegisters {
 public:
    // The status byte's bit for a request for service, which can't be a reason for one.
    static constexpr unsigned ServiceRequest = 1U << 6;
    static constexpr unsigned ServiceReasons = 0xFFU & ~ServiceRequest;
    // The largest value of an enable register with 15 bits.
    static constexpr unsigned HighestEnable = 0x7FFF;

    std::uint8_t eventEnable = 0;
    std::uint8_t serviceRequestEnable = 0;
    std::uint16_t operationEnable = 0;
    std::uint16_t questionableEnable = 0;

    // Sets the event bit of the error's class.
    void NoteError(int number) noexcept;
    void NoteOperationComplete() noexcept { m_events |= OperationComplete; }
    // Reading the event register clears it.
    std::uint8_t TakeEvents() noexcept;
    void ClearEvents() noexcept { m_events = 0; }
    [[nodiscard]] std::uint8_t StatusByte(bool errorsQueued, bool replyWaiting) const noexcept;

 private:
    static constexpr std::uint8_t OperationComplete = 1U << 0;
    static constexpr std::uint8_t QueryError = 1U << 2;
    static constexpr std::uint8_t DeviceError = 1U << 3;
    static constexpr std::uint8_t ExecutionError = 1U << 4;
    static constexpr std::uint8_t CommandError = 1U << 5;
    static constexpr std::uint8_t PowerOn = 1U << 7;

    std::uint8_t m_events = PowerOn;
};

}  // namespace krv::simulator
