// InnerDispatch: a further dual interface of an object, with late-bound members of its own. It
// lives inside the object and shares its identity and its references.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include "windows/automation/DispatchObject.h"

namespace krv::windows {

#pragma GCC diagnostic push
// Interfaces have no destructors: this one goes with its owner.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

template <class Dual>
class InnerDispatch : public Dual {
 public:
    // The owner contains this.
    explicit InnerDispatch(IUnknown& owner) : m_owner(owner) {}
    InnerDispatch(const InnerDispatch&) = delete;
    InnerDispatch& operator=(const InnerDispatch&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return m_owner.QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_owner.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_owner.Release(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** information) override {
        if (index != 0) {
            return DISP_E_BADINDEX;
        }
        const auto own = Information();
        return own ? own.CopyTo(information) : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        const auto own = Information();
        return own ? own->GetIDsOfNames(names, count, ids) : E_UNEXPECTED;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override {
        SetErrorInfo(0, nullptr);
        const auto own = Information();
        return own ? own->Invoke(static_cast<Dual*>(this), id, flags, parameters, result, exception,
                                 wrongArgument)
                   : E_UNEXPECTED;
    }

 protected:
    ~InnerDispatch() = default;

 private:
    static Microsoft::WRL::ComPtr<ITypeInfo> Information() noexcept {
        try {
            return LoadTypeInfo(__uuidof(Dual));
        } catch (...) {
            return nullptr;
        }
    }

    IUnknown& m_owner;
};

#pragma GCC diagnostic pop

}  // namespace krv::windows
