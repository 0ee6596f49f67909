// RegisteredLibrary: one of the project's COM libraries, registered for this machine for a test, at
// whose end nothing of it is left.
#pragma once

#include <gtest/gtest.h>

#include "tests/windows/support/TestedLibrary.h"

namespace krv::tests {

class RegisteredLibrary {
 public:
    explicit RegisteredLibrary(const TestedLibrary& library) : m_library(library) {
        EXPECT_EQ(m_library.Register(), S_OK);
    }
    RegisteredLibrary(const RegisteredLibrary&) = delete;
    RegisteredLibrary& operator=(const RegisteredLibrary&) = delete;
    ~RegisteredLibrary() {
        EXPECT_EQ(m_library.ObjectCount(), 0);
        EXPECT_EQ(m_library.Unregister(), S_OK);
    }

 private:
    const TestedLibrary& m_library;
};

}  // namespace krv::tests
