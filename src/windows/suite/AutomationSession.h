// An I/O session of the suite, over automation. What it can do besides is asked of its interfaces,
// and by name of a session that has none of ours.
#pragma once

#include <memory>
#include <utility>

#include "ports/suite/InstrumentServer.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationSession final : public ports::IoSession, public AutomationPeer {
 public:
    explicit AutomationSession(LateBound session) : m_session(std::move(session)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_session.Object(); }

    std::string Address() override;
    // Sessions whose connection has gone can't say of what kind it is; one that never says counts
    // as alive.
    bool IsAlive() override;
    // Empty for a session that never says.
    std::string ConnectionKind() override;
    // Whether the session is serial is asked of it each time.
    ports::SerialSession* Serial() override;
    // Throws Error 445 when the session can't.
    void ReturnToLocal() override;

 private:
    LateBound m_session;
    std::unique_ptr<ports::SerialSession> m_serial;
};

// Null for no session.
[[nodiscard]] std::shared_ptr<ports::IoSession> SessionOf(LateBound session);
// The automation object of a session, null for null. Throws Error 13 for a session from elsewhere.
[[nodiscard]] IDispatch* AutomationOf(const std::shared_ptr<ports::IoSession>& session);

}  // namespace krv::windows
