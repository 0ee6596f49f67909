#include "suite/windows/server/Session.h"

#include "common/Error.h"
#include "suite/windows/Transports.h"

namespace krv::suitecom {
namespace {

using Microsoft::WRL::ComPtr;
using windows::NewText;

class Session final : public SuiteObject<ICvnIOSession, ICvnGpibSession, ISessionAccess> {
 public:
    explicit Session(std::shared_ptr<server::ScpiInstrument> instrument)
        : SuiteObject(ProgId::Discovery), m_instrument(std::move(instrument)) {}

    HRESULT STDMETHODCALLTYPE get_Address(BSTR* address) override {
        return Guard().Answer(address, [&] { return NewText(m_instrument->Address()); });
    }
    HRESULT STDMETHODCALLTYPE get_ConnectionKind(BSTR* kind) override {
        return Guard().Answer(kind, [&] { return NewText(m_instrument->ConnectionKind()); });
    }
    HRESULT STDMETHODCALLTYPE ReturnToLocal() override {
        return Guard().Run([&] { m_instrument->ReturnToLocal(); });
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(ICvnGpibSession) ? S_OK : SuiteObject::InterfaceSupportsErrorInfo(id);
    }

    std::shared_ptr<server::ScpiInstrument> Connected() noexcept override { return m_instrument; }
    void Close() noexcept override {
        try {
            m_instrument->ReturnToLocal();
        } catch (const std::exception&) {
            // Then it is at its front panel, or out of reach.
        }
        m_instrument->Disconnect();
    }

 private:
    const std::shared_ptr<server::ScpiInstrument> m_instrument;
};

}  // namespace

ComPtr<IDispatch> OpenSession(const std::string& address) {
    return windows::Adopt(
        NewObject<Session>(server::OpenInstrument(KnownTransports(), address, {})));
}

ComPtr<IDispatch> ReopenSession(const std::string& address) {
    return windows::Adopt(NewObject<Session>(server::ReopenInstrument(KnownTransports(), address)));
}

ComPtr<ISessionAccess> AccessTo(IUnknown* session) {
    ComPtr<ISessionAccess> access;
    if (session != nullptr) {
        session->QueryInterface(__uuidof(ISessionAccess),
                                reinterpret_cast<void**>(access.GetAddressOf()));
    }
    return access;
}

}  // namespace krv::suitecom
