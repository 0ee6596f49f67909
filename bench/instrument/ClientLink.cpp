#include "bench/instrument/ClientLink.h"

namespace krv::bench {

ClientLink::AfterIntake ClientLink::TakeIn(std::span<const std::byte> bytes) {
    const Faults::Intake intake = m_generator->ActiveFaults().TakeIn(bytes.size());
    m_session.Feed(bytes.first(intake.bytes));
    return {intake.disconnect, intake.pause};
}

std::optional<Faults::Outgoing> ClientLink::NextReply() {
    while (auto reply = m_session.TakeReply()) {
        if (auto outgoing = m_generator->ActiveFaults().Answer(std::move(*reply))) {
            return outgoing;
        }
    }
    return std::nullopt;
}

}  // namespace krv::bench
