// Fixture for tests with automation objects: an apartment, and the promise that every object is
// released at the end.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include "tests/support/ErrorOf.h"
#include "windows/automation/ComObject.h"

namespace krv::tests {

class AutomationTest : public ::testing::Test {
 protected:
    AutomationTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    // After the members of the test's own fixture have gone.
    ~AutomationTest() override {
        EXPECT_EQ(m_objectsBefore, windows::ModuleCount::Value()) << "objects left";
        CoUninitialize();
    }

 private:
    const long m_objectsBefore = windows::ModuleCount::Value();
};

}  // namespace krv::tests
