#include "cli/ProgressLines.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "common/Text.h"

namespace krv::cli {
namespace {

constexpr std::size_t BarWidth = 30;
constexpr std::size_t LabelWidth = 41;
constexpr int OverallRow = 0;
constexpr int PhaseRow = 1;

// The rows' text lines may hold several lines; one is all there is room for.
std::string OnOneLine(std::string text) {
    for (std::size_t at = text.find(CrLf); at != std::string::npos; at = text.find(CrLf)) {
        text.replace(at, CrLf.size(), ", ");
    }
    return text;
}

double FractionOf(const forms::ProgressBar& bar) {
    const auto range = static_cast<double>(bar.Max) - static_cast<double>(bar.Min);
    const auto done = static_cast<double>(bar.Value) - static_cast<double>(bar.Min);
    // Between the changes of its range and its value a bar may stand outside its range.
    return range > 0 ? std::clamp(done / range, 0.0, 1.0) : 0.0;
}

std::string PercentOf(const forms::ProgressBar& bar) {
    std::string percent = std::to_string(std::lround(FractionOf(bar) * 100));
    percent.insert(0, 3 - std::min<std::size_t>(percent.size(), 3), ' ');
    return percent + '%';
}

std::string BarText(const forms::ProgressBar& bar) {
    const auto filled = static_cast<std::size_t>(FractionOf(bar) * static_cast<double>(BarWidth));
    return '[' + std::string(filled, '#') + std::string(BarWidth - filled, '.') + "] " +
           PercentOf(bar);
}

}  // namespace

void CutTo(std::string& line, std::size_t width) {
    if (line.size() > width) {
        while (width > 0 && (static_cast<unsigned char>(line[width]) & 0xC0U) == 0x80U) {
            --width;
        }
        line.resize(width);
    }
}

std::string ProgressLines::LineOf(const progress::frmCallback& dialog, int row) const {
    const auto width = static_cast<std::size_t>(std::max(m_width - 1, 0));
    std::string line = OnOneLine(dialog.Label1[row].Caption);
    if (row == PhaseRow && !m_note.empty()) {
        line += ' ' + m_note;
        CutTo(line, width);
        return line;
    }
    if (dialog.TextProgress[row].Visible) {
        const std::string text = OnOneLine(dialog.TextProgress[row].Text);
        // Where there is no room for both, the text says more.
        line = line.size() + 1 + text.size() <= width ? line + ' ' + text : text;
    } else if (dialog.ProgressBar1[row].Visible) {
        line.append(LabelWidth - std::min(line.size(), LabelWidth), ' ');
        line += ' ' + BarText(dialog.ProgressBar1[row]);
    }
    CutTo(line, width);
    return line;
}

void ProgressLines::Draw(const progress::frmCallback& dialog) {
    if (m_row != nullptr) {
        if (const std::string doing = Doing(dialog); !doing.empty()) {
            m_row->Show(PercentOf(dialog.ProgressBar1[OverallRow]), doing);
        }
        return;
    }
    if (m_terminal == nullptr) {
        WriteNowAndThen(dialog);
        return;
    }
    const Lines lines{LineOf(dialog, 0), LineOf(dialog, 1)};
    if (m_onTerminal && lines == m_drawn) {
        return;
    }
    std::string output = m_onTerminal ? "\x1b[2A" : "";
    for (const std::string& line : lines) {
        output += '\r' + line + "\x1b[K\n";
    }
    *m_terminal << output << std::flush;
    m_drawn = lines;
    m_onTerminal = true;
}

void ProgressLines::WriteTo(std::ostream& stream, ports::Clock& clock, int intervalMs) {
    m_stream = intervalMs < 0 ? nullptr : &stream;
    m_clock = &clock;
    m_intervalMs = static_cast<std::uint64_t>(intervalMs);
    m_writtenMs = clock.TickCountMs();
}

void ProgressLines::WriteNowAndThen(const progress::frmCallback& dialog) {
    if (m_stream == nullptr) {
        return;
    }
    const std::uint64_t now = m_clock->TickCountMs();
    const std::string doing = Doing(dialog);
    if (doing.empty() || now - m_writtenMs < m_intervalMs) {
        return;
    }
    m_writtenMs = now;
    *m_stream << PercentOf(dialog.ProgressBar1[OverallRow]) << ' ' << doing << std::endl;
}

std::string ProgressLines::Doing(const progress::frmCallback& dialog) const {
    const std::string phase = OnOneLine(dialog.Label1[PhaseRow].Caption);
    return phase.empty() || m_note.empty() ? phase : phase + ' ' + m_note;
}

void ProgressLines::Erase() {
    if (m_onTerminal) {
        *m_terminal << "\x1b[2A\r\x1b[J" << std::flush;
        m_onTerminal = false;
    }
}

}  // namespace krv::cli
