// Arrays of automation: their shape, and their elements in place.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <cstddef>

namespace krv::windows {

// Access to an array's elements for as long as this lives. The array outlives it, and its owner
// can't resize it meanwhile.
class ArrayAccess {
 public:
    // Throws Error when the array can't be locked.
    explicit ArrayAccess(SAFEARRAY* array);
    ArrayAccess(const ArrayAccess&) = delete;
    ArrayAccess& operator=(const ArrayAccess&) = delete;
    ~ArrayAccess() { SafeArrayUnaccessData(m_array); }

    // The first element; the leftmost index varies fastest.
    template <class Element>
    [[nodiscard]] Element* Elements() const {
        return static_cast<Element*>(m_data);
    }

 private:
    SAFEARRAY* m_array;
    void* m_data = nullptr;
};

// The number of elements in a dimension, which counts from 1, and their lowest index. Each throws
// Error 9 for a dimension that the array doesn't have.
[[nodiscard]] std::size_t Extent(SAFEARRAY* array, UINT dimension);
[[nodiscard]] LONG LowerBound(SAFEARRAY* array, UINT dimension);

// Throws Error for an array that doesn't say.
[[nodiscard]] VARTYPE ElementType(SAFEARRAY* array);

}  // namespace krv::windows
