// ActiveRegistration: makes an application object known as the running one of a class, for tests
// that attach to a running application. Only where that class has been pointed at the bench on
// purpose: never in the place of an installed program.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <string>

namespace krv::bench {

// What the class that a program stands in for must lead to in a registry made for tests.
inline constexpr CLSID KrvBookClassId{
    0x6B1E70A4, 0x2C57, 0x4B0F, {0x9D, 0x33, 0x51, 0xE8, 0x0C, 0x7A, 0x94, 0x62}};
inline constexpr CLSID KrvDocClassId{
    0x2F0B6C1D, 0x98E3, 0x4D57, {0xA4, 0x6B, 0x07, 0xD5, 0x3E, 0x1C, 0x82, 0xF9}};

class ActiveRegistration {
 public:
    // Throws Error when the class isn't there or belongs to someone else.
    ActiveRegistration(IUnknown* application, const std::string& className, const CLSID& wanted);
    ActiveRegistration(const ActiveRegistration&) = delete;
    ActiveRegistration& operator=(const ActiveRegistration&) = delete;
    ~ActiveRegistration() { RevokeActiveObject(m_key, nullptr); }

 private:
    DWORD m_key = 0;
};

}  // namespace krv::bench
