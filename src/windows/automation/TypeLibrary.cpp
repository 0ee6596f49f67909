#include <windows.h>

#include <string>
#include <vector>

#include "windows/automation/ComGuard.h"
#include "windows/automation/DispatchObject.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

std::wstring ModulePath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&ModulePath), &module);
    std::vector<wchar_t> path(32768);
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    return {path.data(), length};
}

}  // namespace

ComPtr<ITypeInfo> LoadTypeInfo(const IID& id) {
    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &library));
    ComPtr<ITypeInfo> information;
    ThrowIfFailed(library->GetTypeInfoOfGuid(id, &information));
    return information;
}

}  // namespace krv::windows
