#include "suite/windows/server/SessionObject.h"

#include "common/Error.h"
#include "suite/windows/Transports.h"
#include "suite/windows/server/EscapeKey.h"
#include "windows/automation/Query.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using windows::NewText;

// More is what some sessions offer besides.
template <class... More>
class SessionObject : public SuiteObject<ICvnIOSession, ICvnGpibSession, ISessionAccess, More...> {
    using Base = SuiteObject<ICvnIOSession, ICvnGpibSession, ISessionAccess, More...>;

 public:
    explicit SessionObject(std::shared_ptr<suite::ScpiInstrument> instrument)
        : Base(ProgId::Discovery), m_instrument(std::move(instrument)) {}

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
        const bool isOurs = id == __uuidof(ICvnGpibSession) || ((id == __uuidof(More)) || ...);
        return isOurs ? S_OK : Base::InterfaceSupportsErrorInfo(id);
    }

    std::shared_ptr<suite::ScpiInstrument> Connected() noexcept override { return m_instrument; }
    void Close() noexcept override {
        try {
            m_instrument->ReturnToLocal();
        } catch (const std::exception&) {
            // Then it is at its front panel, or out of reach.
        }
        m_instrument->Disconnect();
    }

 protected:
    using Base::Guard;
    [[nodiscard]] suite::ScpiInstrument& Instrument() const { return *m_instrument; }

 private:
    const std::shared_ptr<suite::ScpiInstrument> m_instrument;
};

class SerialSessionObject final : public SessionObject<ICvnSerialSession> {
 public:
    using SessionObject::SessionObject;

    HRESULT STDMETHODCALLTYPE get_BaudRate(long* baudRate) override {
        return Guard().Answer(baudRate, [&] { return long{Line().BaudRate()}; });
    }
    HRESULT STDMETHODCALLTYPE get_DataBits(long* dataBits) override {
        return Guard().Answer(dataBits, [&] { return long{Line().DataBits()}; });
    }
    HRESULT STDMETHODCALLTYPE get_StopBits(long* stopBits) override {
        return Guard().Answer(stopBits, [&] { return long{Line().StopBits()}; });
    }

 private:
    // Throws Error when the session has ended.
    ports::SerialSession& Line() const {
        static_cast<void>(Instrument().ConnectionKind());
        return *Instrument().Serial();
    }
};

ComPtr<IDispatch> SessionOf(std::shared_ptr<suite::ScpiInstrument> instrument) {
    const bool serial = instrument->Serial() != nullptr;
    return windows::Adopt(serial ? NewObject<SerialSessionObject>(std::move(instrument))
                                 : NewObject<SessionObject<>>(std::move(instrument)));
}

}  // namespace

ComPtr<IDispatch> OpenSession(const std::string& address) {
    EscapeKey escape("Connecting to " + address + " was cancelled.");
    suite::TimeOuts timeOuts;
    timeOuts.watcher = &escape;
    auto instrument = suite::OpenInstrument(KnownTransports(), address, timeOuts);
    instrument->SetTimeOuts({});
    return SessionOf(std::move(instrument));
}

ComPtr<IDispatch> ReopenSession(const std::string& address) {
    return SessionOf(suite::ReopenInstrument(KnownTransports(), address));
}

ComPtr<ISessionAccess> AccessTo(IUnknown* session) {
    return windows::Query<ISessionAccess>(session);
}

}  // namespace krv::suite
