// ServerState: what the objects of one instrument server share: the server and its session.
#pragma once

#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/windows/SuiteObject.h"

namespace krv::suite {

class ServerState {
 public:
    ServerState();

    [[nodiscard]] suite::ScpiInstrumentServer& Server() { return m_server; }
    // Null when the server isn't connected, or isn't any more.
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> Session();
    // Null lets go of the present session. Throws Error when a session of another component can't
    // be connected to by its address; the server is then unconnected.
    void SetSession(IDispatch* session);

 private:
    suite::ScpiInstrumentServer m_server;
    Microsoft::WRL::ComPtr<IDispatch> m_session;
};

}  // namespace krv::suite
