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
#include "tests/windows/TestedLibrary.h"
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

    static LateBound Create(const CLSID& id) { return TestedLibrary::Suite().Create(id); }

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
    static std::string waveform::FailureOf(Work&& work) {
        try {
            work();
            return {};
        } catch (const Error& error) {
            return std::to_string(error.Number()) + ' ' + error.Source() + ": " +
                   error.Description();
        }
    }
};

}  // namespace krv::tests
