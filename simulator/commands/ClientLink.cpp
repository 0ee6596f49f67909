#include "simulator/commands/ClientLink.h"

namespace krv::simulator {

ClientLink::AfterIntake ClientLink::TakeIn(std::span<const std::byte> bytes) {
    const Faults::Intake intake = m_generator->ActiveFaults().TakeIn(bytes.size());
    m_conversation.Received(bytes.first(intake.bytes));
    m_client.Feed(bytes.first(intake.bytes));
    m_generator->NoteTakenIn(intake.bytes);
    if (intake.disconnect) {
        m_conversation.Remark("disconnected by a fault");
    }
    return {intake.disconnect, intake.pause};
}

void ClientLink::EndMessage() {
    m_conversation.EndReceived();
    m_client.EndMessage();
}

void ClientLink::Clear() {
    m_client.Clear();
    m_conversation.Remark("cleared");
}

std::optional<Faults::Outgoing> ClientLink::NextReply() {
    auto outgoing = m_client.TakeReply();
    if (outgoing) {
        m_conversation.Sent(std::as_bytes(std::span(outgoing->text)));
        m_conversation.EndSent();
    }
    return outgoing;
}

}  // namespace krv::simulator
