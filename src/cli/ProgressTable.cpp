#include "cli/ProgressTable.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <utility>

#include "cli/ProgressLines.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

// For the percentage and the beginning of what is being done.
constexpr std::size_t TextWidth = 20;

}  // namespace

class ProgressTable::TableRow final : public ProgressRow {
 public:
    TableRow(ProgressTable& table, std::string name, std::uint64_t now)
        : m_table(table), m_name(std::move(name)), m_writtenMs(now) {}

    void Show(const std::string& percent, const std::string& doing) override {
        m_table.Change(*this, percent, doing);
    }

    ProgressTable& m_table;
    const std::string m_name;
    std::string m_text;
    std::uint64_t m_writtenMs;
};

ProgressTable::ProgressTable(Console& console, const std::vector<std::string>& names)
    : m_console(console) {
    std::size_t width = 0;
    for (const std::string& name : names) {
        width = std::max(width, name.size());
    }
    for (const std::string& name : names) {
        m_rows.push_back(std::make_unique<TableRow>(
            *this, name + std::string(width - name.size(), ' '), m_clock.TickCountMs()));
    }
    Reveal();
}

ProgressTable::~ProgressTable() {
    Hide();
}

ProgressRow& ProgressTable::Row(std::size_t row) {
    return *m_rows[row];
}

void ProgressTable::Hide() {
    const std::lock_guard lock(m_mutex);
    m_isHidden = true;
    if (m_drawn > 0) {
        *m_console.progress << "\x1b[" << m_drawn << "A\r\x1b[J" << std::flush;
        m_drawn = 0;
    }
}

void ProgressTable::Reveal() {
    const std::lock_guard lock(m_mutex);
    m_isHidden = false;
    Draw();
}

void ProgressTable::Change(TableRow& row, const std::string& percent, const std::string& doing) {
    const std::lock_guard lock(m_mutex);
    std::string text = percent + (percent.empty() ? "" : "  ") + doing;
    if (text != row.m_text) {
        row.m_text = std::move(text);
        Draw();
    }
    WriteNowAndThen(row);
}

void ProgressTable::Draw() {
    if (m_console.progress == nullptr || m_isHidden) {
        return;
    }
    const auto width = static_cast<std::size_t>(std::max(m_console.progressWidth - 1, 0));
    std::string output = m_drawn > 0 ? "\x1b[" + std::to_string(m_drawn) + 'A' : "";
    for (const auto& row : m_rows) {
        // How far it is counts more than the whole name.
        std::string line = WithoutControlCharacters(row->m_name);
        CutTo(line, width > TextWidth ? width - TextWidth : 0);
        line += "  " + WithoutControlCharacters(row->m_text);
        CutTo(line, width);
        output += '\r' + line + "\x1b[K\n";
    }
    *m_console.progress << output << std::flush;
    m_drawn = m_rows.size();
}

void ProgressTable::WriteNowAndThen(TableRow& row) {
    const std::uint64_t now = m_clock.TickCountMs();
    if (m_console.progress != nullptr || m_console.progressIntervalMs < 0 || m_isHidden ||
        now - row.m_writtenMs < static_cast<std::uint64_t>(m_console.progressIntervalMs)) {
        return;
    }
    row.m_writtenMs = now;
    m_console.err << row.m_name << "  " << row.m_text << std::endl;
}

}  // namespace krv::cli
