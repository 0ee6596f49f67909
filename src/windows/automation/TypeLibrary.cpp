#include "windows/automation/ComGuard.h"
#include "windows/automation/DispatchObject.h"
#include "windows/base/Module.h"

namespace krv::windows {

using Microsoft::WRL::ComPtr;

ComPtr<ITypeLib> LoadModuleTypeLibrary() {
    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadTypeLibEx(ThisModulePath().c_str(), REGKIND_NONE, &library));
    return library;
}

ComPtr<ITypeInfo> LoadTypeInfo(const IID& id) {
    ComPtr<ITypeInfo> information;
    ThrowIfFailed(LoadModuleTypeLibrary()->GetTypeInfoOfGuid(id, &information));
    return information;
}

}  // namespace krv::windows
