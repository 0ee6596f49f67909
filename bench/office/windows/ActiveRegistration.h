// ActiveRegistration: makes the application object known as the running "Excel.Application", for
// tests that attach to a running application. Only where that class has been pointed at krvbook on
// purpose: never in the place of an installed Excel.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

namespace krv::bench {

// What the class "Excel.Application" must lead to, in a registry made for tests.
inline constexpr CLSID KrvBookClassId{
    0x6B1E70A4, 0x2C57, 0x4B0F, {0x9D, 0x33, 0x51, 0xE8, 0x0C, 0x7A, 0x94, 0x62}};

class ActiveRegistration {
 public:
    // Throws Error when the class isn't there or belongs to someone else.
    explicit ActiveRegistration(IUnknown* application);
    ActiveRegistration(const ActiveRegistration&) = delete;
    ActiveRegistration& operator=(const ActiveRegistration&) = delete;
    ~ActiveRegistration() { RevokeActiveObject(m_key, nullptr); }

 private:
    DWORD m_key = 0;
};

}  // namespace krv::bench
