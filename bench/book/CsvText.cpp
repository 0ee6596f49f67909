#include "bench/book/CsvText.h"

#include <algorithm>

#include "bench/book/CellText.h"
#include "common/Error.h"
#include "common/Numbers.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr char Separator = ',';
constexpr char Quote = '"';
// The columns of any file may have so many rows in all, those of a larger file one for each byte.
constexpr std::size_t RowsInColumns = std::size_t{1} << 24;

bool IsLineEnd(char character) {
    return character == '\r' || character == '\n';
}

class CsvReader {
 public:
    explicit CsvReader(std::string_view text) : m_text(text) {}

    Sheet Read() {
        for (std::int32_t row = 0; m_at < m_text.size(); ++row) {
            if (row >= SheetLimit::Rows) {
                Fail("a sheet has no more than " + std::to_string(SheetLimit::Rows) + " rows");
            }
            ReadRow(row);
        }
        return std::move(m_sheet);
    }

 private:
    void ReadRow(std::int32_t row) {
        for (std::int32_t column = 0;; ++column) {
            if (column >= SheetLimit::Columns) {
                Fail("a sheet has no more than " + std::to_string(SheetLimit::Columns) +
                     " columns");
            }
            ReadField({row, column});
            if (m_at == m_text.size() || m_text[m_at] != Separator) {
                break;
            }
            ++m_at;
        }
        EndLine();
    }

    void ReadField(CellPosition cell) {
        const bool isQuoted = m_at < m_text.size() && m_text[m_at] == Quote;
        const std::string_view field = isQuoted ? QuotedField() : PlainField();
        if (field.empty()) {
            return;
        }
        KeepCompact(cell);
        // Most fields by far are numbers, which need no value in between.
        const ParsedNumber number = ParseNumber(field, {});
        if (number.error == NumberTextError::None) {
            m_sheet.ColumnToFill(cell.column).SetNumber(cell.row, number.value);
        } else {
            m_sheet.ColumnToFill(cell.column).Set(cell.row, ParseCellText(field));
        }
    }

    // A column takes memory for each row up to its last: a few cells at the far end of a sheet
    // would take all that there is.
    void KeepCompact(CellPosition cell) {
        const std::int32_t used = m_sheet.ColumnToFill(cell.column).UsedRows();
        m_rowsInColumns += static_cast<std::size_t>(std::max(0, cell.row + 1 - used));
        if (m_rowsInColumns > RowsInColumns && m_rowsInColumns > m_text.size()) {
            Fail("the cells of this file lie too far apart");
        }
    }

    std::string_view PlainField() {
        const std::size_t start = m_at;
        while (m_at < m_text.size() && m_text[m_at] != Separator && !IsLineEnd(m_text[m_at])) {
            Step();
        }
        return m_text.substr(start, m_at - start);
    }

    std::string_view QuotedField() {
        const std::size_t start = m_at++;
        m_unquoted.clear();
        while (true) {
            if (m_at == m_text.size()) {
                m_at = start;
                Fail("the quotation mark that opens here is never closed");
            }
            if (m_text[m_at] == Quote) {
                if (m_text.substr(m_at + 1, 1) != "\"") {
                    break;
                }
                ++m_at;
            }
            const std::size_t from = m_at;
            Step();
            m_unquoted += m_text.substr(from, m_at - from);
        }
        ++m_at;
        if (m_at < m_text.size() && m_text[m_at] != Separator && !IsLineEnd(m_text[m_at])) {
            Fail("there is text after a closing quotation mark");
        }
        return m_unquoted;
    }

    // Over one character.
    void Step() {
        const std::size_t length = CharacterBytes(m_text.substr(m_at));
        if (length == 1 && static_cast<unsigned char>(m_text[m_at]) >= 0x80) {
            Fail("this is not UTF-8 text");
        }
        m_at += length;
    }

    void EndLine() {
        if (m_text.substr(m_at, 2) == CrLf) {
            m_at += 2;
        } else if (m_at < m_text.size()) {
            ++m_at;
        }
    }

    // Counts lines only now, since a file that can be read needs no counting.
    [[noreturn]] void Fail(const std::string& what) const {
        const auto end = m_text.begin() + static_cast<std::ptrdiff_t>(m_at);
        throw Error(ErrorNumber::InvalidFileFormat,
                    "Line " + std::to_string(1 + std::count(m_text.begin(), end, '\n')) + ": " +
                        what + ".");
    }

    const std::string_view m_text;
    std::size_t m_at = 0;
    std::string m_unquoted;
    Sheet m_sheet;
    std::size_t m_rowsInColumns = 0;
};

void AppendField(std::string& csv, const std::string& field) {
    if (field.find_first_of("\"\r\n,") == std::string::npos) {
        csv += field;
        return;
    }
    csv += Quote;
    for (const char character : field) {
        csv.append(character == Quote ? 2 : 1, character);
    }
    csv += Quote;
}

}  // namespace

Sheet ReadCsv(std::string_view bytes) {
    if (bytes.substr(0, Utf8Mark.size()) == Utf8Mark) {
        bytes.remove_prefix(Utf8Mark.size());
    }
    return CsvReader(bytes).Read();
}

std::string WriteCsv(const Sheet& sheet) {
    std::string csv;
    const std::int32_t columns = sheet.UsedColumns();
    for (std::int32_t row = 0; row < sheet.UsedRows(); ++row) {
        for (std::int32_t column = 0; column < columns; ++column) {
            if (column > 0) {
                csv += Separator;
            }
            AppendField(csv, CellEntry(sheet.At({row, column})));
        }
        csv += CrLf;
    }
    return csv;
}

}  // namespace krv::bench
