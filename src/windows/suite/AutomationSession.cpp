#include "windows/suite/AutomationSession.h"

#include <wrl/client.h>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/Query.h"
#include "windows/suite/SessionInterfaces.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

class AutomationSerialSession final : public ports::SerialSession {
 public:
    explicit AutomationSerialSession(ComPtr<ICvnSerialSession> session)
        : m_session(std::move(session)) {}
    std::int32_t BaudRate() override { return Get(&ICvnSerialSession::get_BaudRate); }
    std::int32_t DataBits() override { return Get(&ICvnSerialSession::get_DataBits); }
    std::int32_t StopBits() override { return Get(&ICvnSerialSession::get_StopBits); }

 private:
    using Getter = HRESULT (STDMETHODCALLTYPE ICvnSerialSession::*)(long*);
    [[nodiscard]] std::int32_t Get(Getter getter) const {
        long value = 0;
        SetErrorInfo(0, nullptr);
        ThrowIfFailed((m_session.Get()->*getter)(&value), m_session.Get(),
                      __uuidof(ICvnSerialSession));
        return value;
    }

    ComPtr<ICvnSerialSession> m_session;
};

// A line of a session that has no such interface, asked by name.
class NamedSerialSession final : public ports::SerialSession {
 public:
    explicit NamedSerialSession(LateBound session) : m_session(std::move(session)) {}
    std::int32_t BaudRate() override { return LongOf(m_session.Get(L"BaudRate")); }
    std::int32_t DataBits() override { return LongOf(m_session.Get(L"DataBits")); }
    std::int32_t StopBits() override { return LongOf(m_session.Get(L"StopBits")); }

 private:
    LateBound m_session;
};

// Sessions of another suite may all have the member; those without a line have no value for it.
bool TellsItsBaudRate(const LateBound& session) {
    return session.Has(L"BaudRate") && TrapErrors([&] { (void)session.GetLong(L"BaudRate"); });
}

}  // namespace

std::string AutomationSession::Address() {
    return m_session.GetText(L"Address");
}

bool AutomationSession::IsAlive() {
    return TrapErrors([this] { static_cast<void>(ConnectionKind()); });
}

std::string AutomationSession::ConnectionKind() {
    return m_session.Has(L"ConnectionKind") ? m_session.GetText(L"ConnectionKind") : std::string();
}

ports::SerialSession* AutomationSession::Serial() {
    m_serial.reset();
    if (auto serial = Query<ICvnSerialSession>(m_session.Object())) {
        m_serial = std::make_unique<AutomationSerialSession>(std::move(serial));
    } else if (TellsItsBaudRate(m_session)) {
        m_serial = std::make_unique<NamedSerialSession>(m_session);
    }
    return m_serial.get();
}

void AutomationSession::ReturnToLocal() {
    const auto gpib = Query<ICvnGpibSession>(m_session.Object());
    if (!gpib) {
        if (!m_session.Has(L"ReturnToLocal")) {
            throw Error(ErrorNumber::ActionNotSupported);
        }
        m_session.Call(L"ReturnToLocal");
        return;
    }
    SetErrorInfo(0, nullptr);
    ThrowIfFailed(gpib->ReturnToLocal(), gpib.Get(), __uuidof(ICvnGpibSession));
}

std::shared_ptr<ports::IoSession> SessionOf(LateBound session) {
    return session ? std::make_shared<AutomationSession>(std::move(session)) : nullptr;
}

IDispatch* AutomationOf(const std::shared_ptr<ports::IoSession>& session) {
    return session ? AutomationBehind(*session) : nullptr;
}

}  // namespace krv::windows
