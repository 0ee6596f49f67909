// SuiteTest: KRVSuite.dll, loaded as a host loads it but without registration. Each test ends with
// every object of the library gone.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <KRVSuite.h>
#include <gtest/gtest.h>
#include <ole2.h>
#include <wrl/client.h>

#include <string>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/LateBound.h"
#include "windows/text/WideText.h"

namespace krv::windows {

class SuiteTest : public ::testing::Test {
 protected:
    SuiteTest() { OleInitialize(nullptr); }
    ~SuiteTest() override { OleUninitialize(); }

    void TearDown() override {
        EXPECT_EQ(Function<LONG (*)()>("ModuleObjectCount")(), 0);
        EXPECT_EQ(Function<HRESULT(WINAPI*)()>("DllCanUnloadNow")(), S_OK);
    }

    template <class Type>
    static Type Function(const char* name) {
        return reinterpret_cast<Type>(reinterpret_cast<void*>(GetProcAddress(Library(), name)));
    }

    static std::wstring LibraryPath() {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        const std::wstring program = path;
        return program.substr(0, program.find_last_of(L'\\') + 1) + L"KRVSuite.dll";
    }

    static HMODULE Library() {
        static const HMODULE library = LoadLibraryW(LibraryPath().c_str());
        return library;
    }

    static LateBound Create(const CLSID& id) {
        using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
        Microsoft::WRL::ComPtr<IClassFactory> factory;
        ThrowIfFailed(Function<GetClassObject>("DllGetClassObject")(
            id, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())));
        Microsoft::WRL::ComPtr<IUnknown> object;
        ThrowIfFailed(factory->CreateInstance(nullptr, IID_IUnknown,
                                              reinterpret_cast<void**>(object.GetAddressOf())));
        return LateBound(object.Get());
    }

    // A session to the address, as the discovery control leaves it in its settings.
    static LateBound OpenSession(const std::string& address) {
        const LateBound discovery = Create(__uuidof(CvnDiscoveryCtl));
        discovery.Put(L"Address", ToWide(address).c_str());
        discovery.Call(L"Connect");
        return discovery.GetObject(L"IOSettings").GetObject(L"IO");
    }

    template <class Interface>
    static Microsoft::WRL::ComPtr<Interface> Query(const LateBound& object) {
        Microsoft::WRL::ComPtr<Interface> found;
        object.Object()->QueryInterface(__uuidof(Interface),
                                        reinterpret_cast<void**>(found.GetAddressOf()));
        return found;
    }

    // "NUMBER SOURCE: DESCRIPTION" of what the work throws; empty when it throws nothing.
    template <class Work>
    static std::string FailureOf(Work&& work) {
        try {
            work();
            return {};
        } catch (const Error& error) {
            return std::to_string(error.Number()) + ' ' + error.Source() + ": " +
                   error.Description();
        }
    }
};

}  // namespace krv::windows
