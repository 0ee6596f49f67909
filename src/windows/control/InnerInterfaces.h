// The control's interfaces besides the toolbar's.
#pragma once

#include "ports/suite/SetupInterface.h"
#include "windows/control/InnerDispatch.h"
// After the windows headers, which it needs.
#include <KRVControl.h>

namespace krv::windows {

// Snapshots of the instrument's state, which the core's control takes and puts back.
class SetupInterfaceObject final : public InnerDispatch<ISetupInterface> {
 public:
    // The owner contains this, and the core's control, too.
    SetupInterfaceObject(IUnknown& owner, ports::SetupInterface& core)
        : InnerDispatch(owner), m_core(core) {}
    HRESULT STDMETHODCALLTYPE get_Model(BSTR* model) override;
    HRESULT STDMETHODCALLTYPE get_SetupValue(VARIANT* snapshot) override;
    HRESULT STDMETHODCALLTYPE put_SetupValue(VARIANT snapshot) override;
    HRESULT STDMETHODCALLTYPE get_Version(BSTR* version) override;
    HRESULT STDMETHODCALLTYPE GetLegacyVantorFileInfo(BSTR first, BSTR second,
                                                      IDispatch** information) override;

 private:
    template <class Work>
    static HRESULT Run(Work&& work) noexcept;

    ports::SetupInterface& m_core;
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
