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

#include "tests/support/ErrorOf.h"
#include "tests/windows/support/TestedLibrary.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"

namespace krv::tests {

class SuiteTest : public ::testing::Test {
 protected:
    SuiteTest() { OleInitialize(nullptr); }
    ~SuiteTest() override { OleUninitialize(); }

    void TearDown() override {
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        EXPECT_EQ(Function<HRESULT(WINAPI*)()>("DllCanUnloadNow")(), S_OK);
    }

    template <class Type>
    static Type Function(const char* name) {
        return TestedLibrary::Suite().Function<Type>(name);
    }

    static windows::LateBound Create(const CLSID& id) { return TestedLibrary::Suite().Create(id); }

    // A session to the address, as the discovery control leaves it in its settings.
    static windows::LateBound OpenSession(const std::string& address) {
        const windows::LateBound discovery = Create(__uuidof(CvnDiscoveryCtl));
        discovery.Put(L"Address", windows::ToWide(address).c_str());
        discovery.Call(L"Connect");
        return discovery.GetObject(L"IOSettings").GetObject(L"IO");
    }

    template <class Interface>
    static Microsoft::WRL::ComPtr<Interface> Query(const windows::LateBound& object) {
        Microsoft::WRL::ComPtr<Interface> found;
        object.Object()->QueryInterface(__uuidof(Interface),
                                        reinterpret_cast<void**>(found.GetAddressOf()));
        return found;
    }
};

}  // namespace krv::tests
