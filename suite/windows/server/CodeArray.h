// CodeArray: the codes in an automation argument, read where they are: no copy of the array is
// made.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <cstdint>
#include <span>

namespace krv::suite {

// Keeps the array locked while it lives, so that its owner can't resize it.
class CodeArray {
 public:
    // Takes a one-dimensional array of 16-bit integers with any lower bound, by value or by
    // reference, or in a VARIANT by reference. Nothing, an omitted argument and an array that was
    // never given a size are empty. Throws Error 13 for anything else, saying what is expected.
    explicit CodeArray(const VARIANT* argument);
    CodeArray(const CodeArray&) = delete;
    CodeArray& operator=(const CodeArray&) = delete;
    ~CodeArray();

    [[nodiscard]] std::span<const std::int16_t> Codes() const { return m_codes; }

 private:
    SAFEARRAY* m_array = nullptr;
    std::span<const std::int16_t> m_codes;
};

}  // namespace krv::suite
