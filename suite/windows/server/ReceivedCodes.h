// ReceivedCodes: the codes in an automation argument, read where they are, without a copy.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <cstdint>
#include <optional>
#include <span>

#include "windows/automation/ArrayAccess.h"

namespace krv::suite {

// Keeps the array locked while it lives, so that its owner can't resize it.
class ReceivedCodes {
 public:
    // Takes a one-dimensional array of 16-bit integers with any lower bound, by value or by
    // reference, or in a VARIANT by reference. Nothing, an omitted argument and an array that was
    // never given a size are empty. Throws Error 13 for anything else, saying what is expected.
    explicit ReceivedCodes(const VARIANT* argument);

    [[nodiscard]] std::span<const std::int16_t> Codes() const { return m_codes; }

 private:
    std::optional<windows::ArrayAccess> m_access;
    std::span<const std::int16_t> m_codes;
};

}  // namespace krv::suite
