#include "windows/control/InnerInterfaces.h"

#include "windows/automation/ComGuard.h"
#include "windows/automation/VariantValue.h"
#include "windows/automation/Variants.h"
#include "windows/com/ThemedScope.h"

namespace krv::windows {
namespace {

constexpr const wchar_t* ResourceCategory = L"{395BCE5B-69FC-441a-904F-1373971E4237}";

}  // namespace

template <class Work>
HRESULT SetupInterfaceObject::Run(Work&& work) noexcept {
    return Guarded(__uuidof(ISetupInterface), "KRVControl", [&] {
        const ThemedScope themed;
        work();
    });
}

HRESULT SetupInterfaceObject::get_Model(BSTR* model) {
    return model == nullptr ? E_POINTER : Run([&] { *model = NewText(m_core.Model()); });
}

HRESULT SetupInterfaceObject::get_SetupValue(VARIANT* snapshot) {
    return snapshot == nullptr ? E_POINTER
                               : Run([&] { *snapshot = ToVariant(m_core.SetupValue()).Detach(); });
}

HRESULT SetupInterfaceObject::put_SetupValue(VARIANT snapshot) {
    // What is no value at all is no snapshot either; the core shows the refusal.
    return Run([&] { m_core.SetSetupValue(ToValueOrEmpty(snapshot)); });
}

HRESULT SetupInterfaceObject::get_Version(BSTR* version) {
    return version == nullptr ? E_POINTER : Run([&] { *version = NewText(m_core.Version()); });
}

HRESULT SetupInterfaceObject::GetLegacyVantorFileInfo(BSTR, BSTR, IDispatch** information) {
    return information != nullptr ? (*information = nullptr, S_OK) : E_POINTER;
}

HRESULT ResourceClient::get_CategoryId(BSTR* id) {
    if (id == nullptr) {
        return E_POINTER;
    }
    *id = SysAllocString(ResourceCategory);
    return *id != nullptr ? S_OK : E_OUTOFMEMORY;
}

}  // namespace krv::windows
