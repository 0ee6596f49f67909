#include "suite/windows/server/ArbObject.h"

#include "suite/windows/server/ReceivedCodes.h"

namespace krv::suite {
namespace {

using windows::NewText;
using windows::TextOf;

class ArbObject final : public SuiteObject<ICvnArb> {
 public:
    explicit ArbObject(std::shared_ptr<ServerState> state)
        : SuiteObject(ProgId::KRVServer), m_state(std::move(state)) {}

    HRESULT STDMETHODCALLTYPE get_HasDualArbOption(VARIANT_BOOL* installed) override {
        return Guard().Answer(installed,
                              [&] { return ToVariantBool(Current()->HasDualArbOption()); });
    }
    HRESULT STDMETHODCALLTYPE get_ArbFileSelected(VARIANT_BOOL* selected) override {
        return Guard().Answer(selected,
                              [&] { return ToVariantBool(Current()->ArbFileSelected()); });
    }
    HRESULT STDMETHODCALLTYPE get_SelectedArbFile(BSTR* name) override {
        return Guard().Answer(name, [&] { return NewText(Current()->SelectedArbFile()); });
    }
    HRESULT STDMETHODCALLTYPE DownloadIQ(BSTR name, VARIANT* iCodes, VARIANT* qCodes,
                                         LONG flags) override {
        return Guard().Run([&] {
            const ReceivedCodes i(iCodes);
            const ReceivedCodes q(qCodes);
            Current()->DownloadIQ(TextOf(name), i.Codes(), q.Codes(), flags);
        });
    }
    HRESULT STDMETHODCALLTYPE DownloadInterleaved(BSTR name, VARIANT* iqCodes,
                                                  LONG flags) override {
        return Guard().Run([&] {
            const ReceivedCodes iq(iqCodes);
            Current()->DownloadInterleaved(TextOf(name), iq.Codes(), flags);
        });
    }
    HRESULT STDMETHODCALLTYPE DownloadMarkers(BSTR name, VARIANT* markers, LONG flags) override {
        return Guard().Run([&] {
            const ReceivedCodes codes(markers);
            Current()->DownloadMarkers(TextOf(name), codes.Codes(), flags);
        });
    }

 private:
    std::shared_ptr<ports::ArbWaveform> Current() { return m_state->Server().Arb(); }

    const std::shared_ptr<ServerState> m_state;
};

}  // namespace

IDispatch* NewArb(std::shared_ptr<ServerState> state) {
    return NewObject<ArbObject>(std::move(state));
}

}  // namespace krv::suite
