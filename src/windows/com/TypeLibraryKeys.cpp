#include "windows/com/TypeLibraryKeys.h"

#include <comdef.h>

#include <cwchar>

#include "windows/automation/ComGuard.h"
#include "windows/automation/DispatchObject.h"
#include "windows/base/Module.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

// The system's own proxies: for interfaces that a type library describes, and for dispatch alone.
constexpr const wchar_t* AutomationProxy = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* DispatchProxy = L"{00020420-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr const wchar_t* Platform = L"\\0\\win64";
#else
constexpr const wchar_t* Platform = L"\\0\\win32";
#endif

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring NameOf(ITypeInfo& information) {
    _bstr_t name;
    ThrowIfFailed(
        information.GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr));
    return {name.GetBSTR(), name.length()};
}

}  // namespace

std::wstring GuidText(const GUID& id) {
    wchar_t text[40];
    return {text, static_cast<std::size_t>(StringFromGUID2(id, text, 40) - 1)};
}

TypeLibraryKeys::TypeLibraryKeys() {
    const ComPtr<ITypeLib> library = LoadModuleTypeLibrary();
    TLIBATTR* attributes = nullptr;
    ThrowIfFailed(library->GetLibAttr(&attributes));
    m_id = GuidText(attributes->guid);
    m_version = std::to_wstring(attributes->wMajorVerNum) + L'.' +
                std::to_wstring(attributes->wMinorVerNum);
    library->ReleaseTLibAttr(attributes);
    _bstr_t title;
    ThrowIfFailed(library->GetDocumentation(-1, nullptr, title.GetAddress(), nullptr, nullptr));
    m_title.assign(title.GetBSTR(), title.length());
    m_interfaces = InterfacesOf(*library.Get());
}

std::vector<TypeLibraryKeys::Interface> TypeLibraryKeys::InterfacesOf(ITypeLib& library) {
    std::vector<Interface> interfaces;
    for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
        ComPtr<ITypeInfo> information;
        ThrowIfFailed(library.GetTypeInfo(index, &information));
        TYPEATTR* attributes = nullptr;
        ThrowIfFailed(information->GetTypeAttr(&attributes));
        const bool hasVtable =
            (attributes->wTypeFlags & (TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDUAL)) != 0;
        const bool isDispatch = attributes->typekind == TKIND_DISPATCH;
        const bool isInterface = attributes->typekind == TKIND_INTERFACE;
        const GUID id = attributes->guid;
        information->ReleaseTypeAttr(attributes);
        if (isDispatch || (isInterface && hasVtable)) {
            interfaces.push_back({GuidText(id), NameOf(*information.Get()),
                                  hasVtable ? AutomationProxy : DispatchProxy});
        }
    }
    return interfaces;
}

void TypeLibraryKeys::Register(const RegistryKey& classes) const {
    const std::wstring path = ThisModulePath();
    const std::wstring key = L"TypeLib\\" + m_id + L'\\' + m_version;
    // First the path, by which Unregister knows that the rest belongs to this file.
    classes.Write(key + Platform, nullptr, path);
    classes.Write(key, nullptr, m_title);
    classes.Write(key + L"\\FLAGS", nullptr, L"0");
    classes.Write(key + L"\\HELPDIR", nullptr, FolderOf(path));
    for (const Interface& known : m_interfaces) {
        const std::wstring own = L"Interface\\" + known.id;
        classes.Write(own, nullptr, known.name);
        classes.Write(own + L"\\ProxyStubClsid32", nullptr, known.proxy);
        classes.Write(own + L"\\TypeLib", nullptr, m_id);
        classes.Write(own + L"\\TypeLib", L"Version", m_version);
    }
}

std::wstring TypeLibraryKeys::FileIn(const RegistryKey& classes) const {
    return classes.Read(L"TypeLib\\" + m_id + L'\\' + m_version + Platform);
}

void TypeLibraryKeys::Unregister(const RegistryKey& classes) const {
    if (_wcsicmp(FileIn(classes).c_str(), ThisModulePath().c_str()) == 0) {
        Remove(classes);
    }
}

void TypeLibraryKeys::Remove(const RegistryKey& classes) const {
    const std::wstring library = L"TypeLib\\" + m_id;
    const std::wstring key = library + L'\\' + m_version;
    for (const Interface& known : m_interfaces) {
        classes.DeleteTree(L"Interface\\" + known.id);
    }
    classes.DeleteTree(key + Platform);
    // What the 32-bit and the 64-bit library share goes with the last of them.
    if (!classes.HasContent(key + L"\\0")) {
        classes.DeleteTree(key);
        classes.DeleteWhenEmpty(library);
    }
}

}  // namespace krv::windows
