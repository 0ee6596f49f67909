// ProgressLink: links a row of the progress dialog to the row above for as long as it lives, so
// that a phase that fails leaves no link behind.
#pragma once

#include <cstdint>

#include "common/progress/frmCallback.h"

namespace krv::progress {

class ProgressLink {
 public:
    // Throws Error 9 for a row without a place in the link tables.
    ProgressLink(frmCallback& progress, std::int16_t row, std::int32_t low, std::int32_t high)
        : m_progress(progress), m_row(row) {
        m_progress.LinkProgressBars(row, low, high);
    }
    ProgressLink(const ProgressLink&) = delete;
    ProgressLink& operator=(const ProgressLink&) = delete;
    ~ProgressLink() { m_progress.UnlinkProgressBars(m_row); }

 private:
    frmCallback& m_progress;
    const std::int16_t m_row;
};

}  // namespace krv::progress
