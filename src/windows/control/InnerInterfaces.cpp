#include "windows/control/InnerInterfaces.h"

#include "windows/automation/ComGuard.h"

namespace krv::windows {
namespace {

constexpr const wchar_t* ResourceCategory = L"{395BCE5B-69FC-441a-904F-1373971E4237}";

HRESULT NotAvailable() {
    return ReportError(
        E_NOTIMPL,
        "Capturing and restoring instrument settings isn't available in this version "
        "of the control.",
        "KRVControl", __uuidof(ISetupInterface));
}

}  // namespace

HRESULT SetupInterface::get_Model(BSTR* model) {
    return model != nullptr ? (*model = nullptr, NotAvailable()) : E_POINTER;
}

HRESULT SetupInterface::get_SetupValue(VARIANT* snapshot) {
    return snapshot != nullptr ? (VariantInit(snapshot), NotAvailable()) : E_POINTER;
}

HRESULT SetupInterface::put_SetupValue(VARIANT) {
    return NotAvailable();
}

HRESULT SetupInterface::get_Version(BSTR* version) {
    return version != nullptr ? (*version = nullptr, NotAvailable()) : E_POINTER;
}

HRESULT SetupInterface::GetLegacyVantorFileInfo(BSTR, BSTR, IDispatch** information) {
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
