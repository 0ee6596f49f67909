// DispatchMembers: the late-bound members of a dual interface, which run through the module's type
// library and so behave as the vtable calls do.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>

namespace krv::windows {

// The type library of the module that holds this code. Throws Error when it doesn't load.
[[nodiscard]] Microsoft::WRL::ComPtr<ITypeLib> LoadModuleTypeLibrary();
// The description of an interface or class in the type library of the module that holds this code.
// Throws Error when the library doesn't load.
[[nodiscard]] Microsoft::WRL::ComPtr<ITypeInfo> LoadTypeInfo(const IID& id);

#pragma GCC diagnostic push
// Interfaces have no destructors: objects are destroyed by their last Release.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Base is Dual, an interface derived from IDispatch, or a class that derives from it.
template <class Dual, class Base = Dual>
class DispatchMembers : public Base {
 public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return count == nullptr ? E_POINTER : (*count = 1, S_OK);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** information) override {
        if (information == nullptr || index != 0) {
            return information == nullptr ? E_POINTER : DISP_E_BADINDEX;
        }
        const auto& own = Information();
        return own ? own.CopyTo(information) : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        if (names == nullptr || ids == nullptr) {
            return E_POINTER;
        }
        if (count == 0 || std::find(names, names + count, nullptr) != names + count) {
            return E_INVALIDARG;
        }
        const auto& own = Information();
        return own ? own->GetIDsOfNames(names, count, ids) : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override {
        if (parameters == nullptr) {
            return E_POINTER;
        }
        if ((parameters->cArgs > 0 && parameters->rgvarg == nullptr) ||
            (parameters->cNamedArgs > 0 && parameters->rgdispidNamedArgs == nullptr)) {
            return E_INVALIDARG;
        }
        SetErrorInfo(0, nullptr);
        const auto& own = Information();
        return own ? own->Invoke(static_cast<Dual*>(this), id, flags, parameters, result, exception,
                                 wrongArgument)
                   : E_UNEXPECTED;
    }

 protected:
    DispatchMembers() = default;
    DispatchMembers(const DispatchMembers&) = delete;
    DispatchMembers& operator=(const DispatchMembers&) = delete;

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

#pragma GCC diagnostic pop

}  // namespace krv::windows
