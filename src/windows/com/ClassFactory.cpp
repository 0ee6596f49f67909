#include "windows/com/ClassFactory.h"

#include "windows/automation/ComGuard.h"

namespace krv::windows {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    if (outer != nullptr) {
        return CLASS_E_NOAGGREGATION;
    }
    Microsoft::WRL::ComPtr<IUnknown> created;
    const HRESULT result = Guarded(IID_IClassFactory, ThisComModule().name,
                                   [&] { created = Adopt(m_class.create()); });
    return SUCCEEDED(result) ? created->QueryInterface(id, object) : result;
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    lock != FALSE ? ModuleCount::Add() : ModuleCount::Remove();
    return S_OK;
}

}  // namespace krv::windows
