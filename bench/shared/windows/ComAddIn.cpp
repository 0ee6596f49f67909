#include "bench/shared/windows/ComAddIn.h"

#include <array>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"

namespace krv::bench {
namespace {

// What an application hands over besides: how it was started, by a user.
class Custom {
 public:
    Custom() {
        VARIANT startedBy;
        VariantInit(&startedBy);
        V_VT(&startedBy) = VT_I4;
        V_I4(&startedBy) = 1;
        LONG first = 0;
        SafeArrayPutElement(m_array, &first, &startedBy);
    }
    Custom(const Custom&) = delete;
    Custom& operator=(const Custom&) = delete;
    ~Custom() { SafeArrayDestroy(m_array); }
    [[nodiscard]] SAFEARRAY** Address() { return &m_array; }

 private:
    SAFEARRAY* m_array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
};

}  // namespace

std::wstring ComAddIn::ClassText() const {
    CLSID id{};
    std::array<wchar_t, 40> text{};
    if (FAILED(CLSIDFromProgID(m_registered.progId.c_str(), &id))) {
        return {};
    }
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

void ComAddIn::Create() {
    CLSID id{};
    windows::ThrowIfFailed(CLSIDFromProgID(m_registered.progId.c_str(), &id));
    windows::ThrowIfFailed(
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(windows::IDTExtensibility2),
                         reinterpret_cast<void**>(m_addIn.ReleaseAndGetAddressOf())));
}

void ComAddIn::Connect(IDispatch* application, IDispatch* instance, windows::ConnectMode mode) {
    if (IsConnected()) {
        return;
    }
    try {
        Create();
        Custom custom;
        windows::ThrowIfFailed(
            m_addIn->OnConnection(application, mode, instance, custom.Address()));
    } catch (const Error&) {
        m_addIn.Reset();
        m_object.Reset();
        Remember(m_registered.behavior & ~LoadBehavior::Connected);
        throw;
    }
    const bool isOnce = (m_registered.behavior & LoadBehavior::OnceAtStartup) != 0;
    Remember(isOnce ? LoadBehavior::OnDemand | LoadBehavior::Connected
                    : m_registered.behavior | LoadBehavior::Connected);
}

void ComAddIn::TellStartupComplete() {
    Custom custom;
    if (m_addIn) {
        m_addIn->OnStartupComplete(custom.Address());
    }
}

void ComAddIn::TellBeginShutdown() {
    Custom custom;
    if (m_addIn) {
        m_addIn->OnBeginShutdown(custom.Address());
    }
}

void ComAddIn::Disconnect(windows::DisconnectMode mode) {
    if (!m_addIn) {
        return;
    }
    Custom custom;
    m_addIn->OnDisconnection(mode, custom.Address());
    m_object.Reset();
    m_addIn.Reset();
    if (mode == windows::DisconnectMode::UserClosed) {
        Remember(m_registered.behavior & ~LoadBehavior::Connected);
    }
}

void ComAddIn::Remember(DWORD behavior) {
    if (behavior != m_registered.behavior) {
        m_registered.behavior = behavior;
        WriteLoadBehavior(m_application, m_registered.progId, behavior);
    }
}

}  // namespace krv::bench
