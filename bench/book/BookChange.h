// What can change in the workbook application, for those who show it.
#pragma once

#include <cstdint>

namespace krv::bench {

enum class BookChange : std::uint8_t {
    Books,
    Cells,
    Selection,
    StatusBar,
    Cursor,
    ScreenUpdating,
    CommandBars
};

}  // namespace krv::bench
