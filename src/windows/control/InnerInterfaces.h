// The control's interfaces besides the toolbar's.
#pragma once

#include "windows/control/InnerDispatch.h"
// After the windows headers, which it needs.
#include <KRVControl.h>

namespace krv::windows {

// Captured states: what can't be answered without them fails with a text that says so.
class SetupInterface final : public InnerDispatch<ISetupInterface> {
 public:
    using InnerDispatch::InnerDispatch;
    HRESULT STDMETHODCALLTYPE get_Model(BSTR* model) override;
    HRESULT STDMETHODCALLTYPE get_SetupValue(VARIANT* snapshot) override;
    HRESULT STDMETHODCALLTYPE put_SetupValue(VARIANT snapshot) override;
    HRESULT STDMETHODCALLTYPE get_Version(BSTR* version) override;
    HRESULT STDMETHODCALLTYPE GetLegacyVantorFileInfo(BSTR first, BSTR second,
                                                      IDispatch** information) override;
};

class DebugContainer final : public InnerDispatch<IDebugContainer> {
 public:
    using InnerDispatch::InnerDispatch;
};

class ResourceClient final : public InnerDispatch<CvnResourceClient> {
 public:
    using InnerDispatch::InnerDispatch;
    HRESULT STDMETHODCALLTYPE get_CategoryId(BSTR* id) override;
};

}  // namespace krv::windows
