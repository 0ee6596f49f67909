// TestedLibrary: one of the project's COM libraries, which lie beside the tests: loaded as a host
// loads it, its exported functions, its registration.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>
#include <wrl/client.h>

#include <filesystem>
#include <string>

#include "windows/automation/ComGuard.h"
#include "windows/automation/LateBound.h"

namespace krv::tests {

class TestedLibrary {
 public:
    // E.g. "KRVSuite.dll", or the path of a copy.
    explicit TestedLibrary(const std::filesystem::path& file)
        : m_path((FolderOfTheTests() / file).wstring()), m_module(LoadLibraryW(m_path.c_str())) {}

    [[nodiscard]] const std::wstring& Path() const { return m_path; }

    template <class Type>
    [[nodiscard]] Type Function(const char* name) const {
        return reinterpret_cast<Type>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

    [[nodiscard]] HRESULT Register() const {
        return Function<HRESULT(WINAPI*)()>("DllRegisterServer")();
    }
    [[nodiscard]] HRESULT Unregister() const {
        return Function<HRESULT(WINAPI*)()>("DllUnregisterServer")();
    }
    [[nodiscard]] HRESULT Install(bool install, const wchar_t* commandLine) const {
        return Function<HRESULT(WINAPI*)(BOOL, LPCWSTR)>("DllInstall")(install, commandLine);
    }

    // Objects and locks that keep it loaded.
    [[nodiscard]] long ObjectCount() const { return Function<LONG (*)()>("ModuleObjectCount")(); }

    // An object of the class, without registration.
    [[nodiscard]] windows::LateBound Create(const CLSID& id) const {
        using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
        Microsoft::WRL::ComPtr<IClassFactory> factory;
        windows::ThrowIfFailed(Function<GetClassObject>("DllGetClassObject")(
            id, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())));
        Microsoft::WRL::ComPtr<IUnknown> object;
        windows::ThrowIfFailed(factory->CreateInstance(
            nullptr, IID_IUnknown, reinterpret_cast<void**>(object.GetAddressOf())));
        return windows::LateBound(object.Get());
    }

    [[nodiscard]] static const TestedLibrary& Control() {
        static const TestedLibrary library(L"KRVControl.dll");
        return library;
    }
    [[nodiscard]] static const TestedLibrary& Suite() {
        static const TestedLibrary library(L"KRVSuite.dll");
        return library;
    }
    static const TestedLibrary& AddIn() {
        static const TestedLibrary library(L"KRVAddIn.dll");
        return library;
    }

 private:
    static std::filesystem::path FolderOfTheTests() {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        return std::filesystem::path(path).parent_path();
    }

    std::wstring m_path;
    HMODULE m_module;
};

}  // namespace krv::tests
