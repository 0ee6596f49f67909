// ProgressLines: the progress dialog as two live lines of a terminal; or, where there is no
// terminal, now and then as a line of text.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "cli/ProgressRow.h"
#include "common/progress/frmCallback.h"
#include "ports/desktop/Clock.h"

namespace krv::cli {

// At most `width` bytes, without half a character at the end: a line that wraps would break the
// cursor movements.
void CutTo(std::string& line, std::size_t width);

class ProgressLines {
 public:
    // Without a terminal (null), nothing is ever drawn. The terminal outlives the lines.
    ProgressLines(std::ostream* terminal, int width) : m_terminal(terminal), m_width(width) {}

    // Where nothing can be drawn, writes how far the work is to the stream, but not more often than
    // in this interval. Both outlive the lines.
    void WriteTo(std::ostream& stream, ports::Clock& clock, int intervalMs);
    // Shows the progress in a row that outlives the lines, and draws nothing.
    void ShowIn(ProgressRow& row) { m_row = &row; }
    // Something that the dialog doesn't know of its lower row, until the next note; may be empty.
    void SetNote(const std::string& note) { m_note = note; }

    // Draws what has changed since the last time.
    void Draw(const progress::frmCallback& dialog);
    // Takes the lines off the terminal, so that other text can be written; Draw brings them back.
    void Erase();

 private:
    static constexpr int Rows = 2;
    using Lines = std::array<std::string, Rows>;

    [[nodiscard]] std::string LineOf(const progress::frmCallback& dialog, int row) const;
    // The lower row's text and the note behind it.
    [[nodiscard]] std::string Doing(const progress::frmCallback& dialog) const;
    void WriteNowAndThen(const progress::frmCallback& dialog);

    std::ostream* m_terminal;
    int m_width;
    bool m_onTerminal = false;
    Lines m_drawn;
    std::string m_note;
    ProgressRow* m_row = nullptr;
    std::ostream* m_stream = nullptr;
    ports::Clock* m_clock = nullptr;
    std::uint64_t m_intervalMs = 0;
    std::uint64_t m_writtenMs = 0;
};

}  // namespace krv::cli
