#include "simulator/scpi/StatusRegisters.h"

#include <utility>

namespace krv::simulator {
namespace {

constexpr unsigned ErrorsQueued = 1U << 2;
constexpr unsigned ReplyWaiting = 1U << 4;
constexpr unsigned EventSummary = 1U << 5;

}  // namespace

void StatusRegisters::NoteError(int number) noexcept {
    const int errorClass = -number / 100;
    switch (errorClass) {
        case 1:
            m_events |= CommandError;
            break;
        case 2:
            m_events |= ExecutionError;
            break;
        case 4:
            m_events |= QueryError;
            break;
        default:
            m_events |= DeviceError;
            break;
    }
}

std::uint8_t StatusRegisters::TakeEvents() noexcept {
    return std::exchange(m_events, std::uint8_t{0});
}

std::uint8_t StatusRegisters::StatusByte(bool errorsQueued, bool replyWaiting) const noexcept {
    unsigned status = 0;
    status |= errorsQueued ? ErrorsQueued : 0;
    status |= replyWaiting ? ReplyWaiting : 0;
    status |= (m_events & eventEnable) != 0 ? EventSummary : 0;
    status |= (status & serviceRequestEnable & ~ServiceRequest) != 0 ? ServiceRequest : 0;
    return static_cast<std::uint8_t>(status);
}

}  // namespace krv::simulator
