// ProgressTable: the progress of several runs as live rows of a terminal; or, where there is no
// terminal, now and then as a line of text for each. Runs may be on threads of their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "cli/ProgressRow.h"
#include "cli/SystemClock.h"

namespace krv::cli {

class ProgressTable {
 public:
    // The names stand in front of the rows. The console outlives the table.
    ProgressTable(Console& console, const std::vector<std::string>& names);
    ~ProgressTable();
    ProgressTable(const ProgressTable&) = delete;
    ProgressTable& operator=(const ProgressTable&) = delete;

    [[nodiscard]] ProgressRow& Row(std::size_t row);
    // Takes the table off the terminal, and shows nothing until it is revealed.
    void Hide();
    void Reveal();

 private:
    class TableRow;

    void Change(TableRow& row, const std::string& percent, const std::string& doing);
    void Draw();
    void WriteNowAndThen(TableRow& row);

    Console& m_console;
    SystemClock m_clock;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<TableRow>> m_rows;
    // Lines that stand on the terminal.
    std::size_t m_drawn = 0;
    bool m_isHidden = false;
};

}  // namespace krv::cli
