// DispatchObject: a ComObject with a dual interface.
#pragma once

#include "windows/automation/ComObject.h"
#include "windows/automation/DispatchMembers.h"

namespace krv::windows {

// Dual is an interface derived from IDispatch; Others are further interfaces.
template <class Dual, class... Others>
class DispatchObject : public DispatchMembers<Dual, ComObject<Dual, ISupportErrorInfo, Others...>> {
    using Base = ComObject<Dual, ISupportErrorInfo, Others...>;

 public:
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(Dual) || id == IID_IDispatch ? S_OK : S_FALSE;
    }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IDispatch ? static_cast<Dual*>(this) : Base::FindInterface(id);
    }
};

}  // namespace krv::windows
