#include "suite/windows/server/ServerObject.h"

#include "suite/scpi/SupportedModels.h"
#include "suite/windows/server/ArbObject.h"
#include "suite/windows/server/EscapeKey.h"
#include "suite/windows/server/ServerState.h"
#include "windows/automation/VariantValue.h"

namespace krv::suite {
namespace {

using windows::NewText;
using windows::NewTextList;
using State = std::shared_ptr<ServerState>;

class InstrumentObject final : public SuiteObject<ICvnInstrument> {
 public:
    explicit InstrumentObject(State state)
        : SuiteObject(ProgId::KRVServer), m_state(std::move(state)) {}

    HRESULT STDMETHODCALLTYPE get_Model(BSTR* model) override {
        return Guard().Answer(model, [&] { return NewText(Current().Model()); });
    }
    HRESULT STDMETHODCALLTYPE get_FirmwareRevision(BSTR* revision) override {
        return Guard().Answer(revision, [&] { return NewText(Current().FirmwareRevision()); });
    }
    HRESULT STDMETHODCALLTYPE get_SerialNumber(BSTR* serialNumber) override {
        return Guard().Answer(serialNumber, [&] { return NewText(Current().SerialNumber()); });
    }
    HRESULT STDMETHODCALLTYPE get_IO(IDispatch** session) override {
        return Guard().Answer(session, [&] { return m_state->Session().Detach(); });
    }
    HRESULT STDMETHODCALLTYPE put_IO(IDispatch* session) override {
        return Guard().Run([&] { m_state->SetSession(session); });
    }
    HRESULT STDMETHODCALLTYPE putref_IO(IDispatch* session) override { return put_IO(session); }
    HRESULT STDMETHODCALLTYPE FileExists(BSTR name, VARIANT_BOOL* exists) override {
        return Guard().Answer(
            exists, [&] { return ToVariantBool(Current().FileExists(windows::TextOf(name))); });
    }
    HRESULT STDMETHODCALLTYPE ReadError(VARIANT* message, LONG* number) override {
        if (message == nullptr) {
            return E_POINTER;
        }
        return Guard().Answer(number, [&] {
            const ports::InstrumentError error = Current().ReadError();
            windows::GiveBack(message, error.message);
            return LONG{error.number};
        });
    }
    HRESULT STDMETHODCALLTYPE CaptureState(VARIANT* state) override {
        return Guard().Answer(state, [&] {
            const EscapeEndsWaits escape(m_state->Server().ScpiAccess(),
                                         "The capture of the state was cancelled.");
            return windows::ToVariant(Current().CaptureState()).Detach();
        });
    }
    HRESULT STDMETHODCALLTYPE RestoreState(VARIANT state) override {
        return Guard().Run([&] {
            const EscapeEndsWaits escape(m_state->Server().ScpiAccess(),
                                         "Restoring the state was cancelled.");
            Current().RestoreState(windows::ToValue(state));
        });
    }

 private:
    ports::ConnectedInstrument& Current() { return *m_state->Server().Instrument(); }

    const State m_state;
};

class OptionsObject final : public SuiteObject<ICvnOptions> {
 public:
    explicit OptionsObject(State state)
        : SuiteObject(ProgId::KRVServer), m_state(std::move(state)) {}

    HRESULT STDMETHODCALLTYPE get_ArbInstalled(VARIANT_BOOL* installed) override {
        return Guard().Answer(
            installed, [&] { return ToVariantBool(m_state->Server().Arb()->HasDualArbOption()); });
    }
    HRESULT STDMETHODCALLTYPE get_Names(VARIANT* names) override {
        return Guard().Answer(names,
                              [&] { return NewTextList(m_state->Server().InstalledOptions()); });
    }

 private:
    const State m_state;
};

class ServerObject final : public SuiteObject<ICvnKRVServer> {
 public:
    ServerObject() : SuiteObject(ProgId::KRVServer), m_state(std::make_shared<ServerState>()) {}

    HRESULT STDMETHODCALLTYPE get_Instrument(IDispatch** instrument) override {
        return Guard().Answer(instrument, [&] { return NewObject<InstrumentObject>(m_state); });
    }
    HRESULT STDMETHODCALLTYPE get_Model(BSTR* model) override {
        return Guard().Answer(model,
                              [&] { return NewText(m_state->Server().Instrument()->Model()); });
    }
    HRESULT STDMETHODCALLTYPE get_ModelName(BSTR* model) override { return get_Model(model); }
    HRESULT STDMETHODCALLTYPE PrepareForCapture() override {
        return Guard().Run([&] { m_state->Server().PrepareForCapture(); });
    }
    HRESULT STDMETHODCALLTYPE SaveScreenImage(BSTR file, LONG format) override {
        return Guard().Run([&] {
            const EscapeEndsWaits escape(m_state->Server().ScpiAccess(),
                                         "Fetching the screen image was cancelled.");
            m_state->Server().SaveScreenImage(windows::TextOf(file), format);
        });
    }
    HRESULT STDMETHODCALLTYPE get_SupportedModels(VARIANT* models) override {
        return Guard().Answer(models, [] {
            return NewTextList({suite::SupportedModels.begin(), suite::SupportedModels.end()});
        });
    }
    HRESULT STDMETHODCALLTYPE get_Options(IDispatch** options) override {
        return Guard().Answer(options, [&] { return NewObject<OptionsObject>(m_state); });
    }
    HRESULT STDMETHODCALLTYPE get_Arb(IDispatch** arb) override {
        return Guard().Answer(arb, [&] { return NewArb(m_state); });
    }

 private:
    const State m_state;
};

}  // namespace

IUnknown* NewKRVServer() {
    return NewObject<ServerObject>();
}

}  // namespace krv::suite
