#include "suite/windows/server/ServerState.h"

#include "suite/windows/Transports.h"
#include "suite/windows/server/SessionObject.h"
#include "windows/automation/LateBound.h"

namespace krv::suite {

using Microsoft::WRL::ComPtr;

ServerState::ServerState() : m_server(KnownTransports()) {}

ComPtr<IDispatch> ServerState::Session() {
    return m_server.Instrument()->IO() ? m_session : nullptr;
}

void ServerState::SetSession(IDispatch* session) {
    const ComPtr<IDispatch> next(session);
    const ComPtr<IDispatch> previous = std::move(m_session);
    m_session.Reset();
    m_server.Disconnect();
    if (next == nullptr) {
        return;
    }
    if (const auto access = AccessTo(session)) {
        m_server.Adopt(access->Connected());
    } else {
        m_server.Connect(windows::LateBound(session).GetText(L"Address"));
    }
    m_session = next;
}

}  // namespace krv::suite
