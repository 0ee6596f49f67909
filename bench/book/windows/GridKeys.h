// What keys do to a selection: arrows, Home, End, pages, Enter, Tab, Ctrl+A, Ctrl+Space,
// Shift+Space; Ctrl with an arrow goes to the end of the data, and Shift extends.
#pragma once

#include <windows.h>

#include <cstdint>

#include "bench/book/Workbook.h"

namespace krv::bench {

struct HeldKeys {
    bool shift = false;
    bool control = false;
};

// False for a key that selects nothing. A page has this many rows.
bool SelectByKey(Workbook& book, WPARAM key, HeldKeys held, std::int32_t page);

}  // namespace krv::bench
