// LentCodes: the caller's codes as an automation array of 16-bit integers, counted from 1, without
// a copy of them.
//
// The receiver may read the array during the call that it is handed to, and can neither resize nor
// free it: it is locked, and its memory stays the caller's. The codes outlive the LentCodes.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <cstdint>
#include <span>

namespace krv::windows {

class LentCodes {
 public:
    // Throws std::bad_alloc, and Error when there are more codes than an array can count.
    explicit LentCodes(std::span<const std::int16_t> codes);
    LentCodes(const LentCodes&) = delete;
    LentCodes& operator=(const LentCodes&) = delete;
    ~LentCodes();

    // The argument for a call, valid as long as this. It is by reference, as arrays travel that the
    // receiver isn't meant to copy.
    [[nodiscard]] VARIANT Argument() noexcept;

 private:
    SAFEARRAY* m_array = nullptr;
    // The array that the receiver gets.
    SAFEARRAY* m_shown = nullptr;
};

}  // namespace krv::windows
