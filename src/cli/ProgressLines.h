// ProgressLines: the progress dialog as two live lines of a terminal.
#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <string>

#include "common/progress/frmCallback.h"

namespace krv::cli {

class ProgressLines {
 public:
    // Without a terminal (null), nothing is ever drawn. The terminal outlives the lines.
    ProgressLines(std::ostream* terminal, int width) : m_terminal(terminal), m_width(width) {}

    // Draws what has changed since the last time.
    void Draw(const progress::frmCallback& dialog);
    // Takes the lines off the terminal, so that other text can be written; Draw brings them back.
    void Erase();

 private:
    static constexpr int Rows = 2;
    using Lines = std::array<std::string, Rows>;

    [[nodiscard]] std::string LineOf(const progress::frmCallback& dialog, int row) const;

    std::ostream* m_terminal;
    int m_width;
    bool m_onTerminal = false;
    Lines m_drawn;
};

}  // namespace krv::cli
