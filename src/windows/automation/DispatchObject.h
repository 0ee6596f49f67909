// DispatchObject: a ComObject with a dual interface, whose late-bound calls run through the type
// library and so behave as the vtable calls do.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>
#include <wrl/client.h>

#include "windows/automation/ComObject.h"

namespace krv::windows {

// The type library of the module that holds this code. Throws Error when it doesn't load.
[[nodiscard]] Microsoft::WRL::ComPtr<ITypeLib> LoadModuleTypeLibrary();
// The description of an interface or class in the type library of the module that holds this code.
// Throws Error when the library doesn't load.
[[nodiscard]] Microsoft::WRL::ComPtr<ITypeInfo> LoadTypeInfo(const IID& id);

// Dual is an interface derived from IDispatch; Others are further interfaces.
template <class Dual, class... Others>
class DispatchObject : public ComObject<Dual, ISupportErrorInfo, Others...> {
    using Base = ComObject<Dual, ISupportErrorInfo, Others...>;

 public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** information) override {
        if (index != 0) {
            return DISP_E_BADINDEX;
        }
        const auto& own = Information();
        return own ? own.CopyTo(information) : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        const auto& information = Information();
        return information ? information->GetIDsOfNames(names, count, ids) : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override {
        SetErrorInfo(0, nullptr);
        const auto& information = Information();
        return information ? information->Invoke(static_cast<Dual*>(this), id, flags, parameters,
                                                 result, exception, wrongArgument)
                           : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(Dual) || id == IID_IDispatch ? S_OK : S_FALSE;
    }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IDispatch ? static_cast<Dual*>(this) : Base::FindInterface(id);
    }

 private:
    // Kept, since loading it takes longer than most calls.
    const Microsoft::WRL::ComPtr<ITypeInfo>& Information() noexcept {
        try {
            if (!m_information) {
                m_information = LoadTypeInfo(__uuidof(Dual));
            }
        } catch (...) {
            m_information.Reset();
        }
        return m_information;
    }

    Microsoft::WRL::ComPtr<ITypeInfo> m_information;
};

}  // namespace krv::windows
