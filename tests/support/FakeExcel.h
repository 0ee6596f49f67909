// FakeExcel: a worksheet of one sheet behind the spreadsheet port. Ranges are given by text, e.g.
// "A1:A10" or "A1:A10,C1:C10"; "!" in a text makes the application refuse it.
#pragma once

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "ports/office/Excel.h"

namespace krv::tests {

class FakeExcel final : public ports::ExcelApplication {
 public:
    // Cells by row and column from 1; a missing one is empty.
    std::map<std::pair<int, int>, Value> Cells;
    std::string SelectionText;
    // What texts are resolved on.
    ports::SheetName ActiveSheet{"Book1", "Sheet1"};
    int ResolveCount = 0;

    void PutColumn(int column, const std::vector<double>& values) {
        for (std::size_t row = 0; row < values.size(); ++row) {
            Cells[{static_cast<int>(row) + 1, column}] = values[row];
        }
    }

    std::shared_ptr<ports::Range> ResolveRange(const std::string& text) override {
        ++ResolveCount;
        return std::make_shared<FakeRange>(*this, text);
    }
    std::shared_ptr<ports::Range> Selection() override {
        if (SelectionText.empty()) {
            throw Error(438, "Object doesn't support this property or method");
        }
        return std::make_shared<FakeRange>(*this, SelectionText);
    }

 private:
    struct Area {
        int row1, column1, row2, column2;
        [[nodiscard]] int Rows() const { return row2 - row1 + 1; }
        [[nodiscard]] int Columns() const { return column2 - column1 + 1; }
    };

    class FakeRange final : public ports::Range {
     public:
        FakeRange(FakeExcel& excel, const std::string& text)
            : m_excel(excel), m_sheet(excel.ActiveSheet) {
            std::size_t start = 0;
            while (start <= text.size()) {
                const std::size_t comma = std::min(text.find(',', start), text.size());
                m_areas.push_back(ParseArea(text.substr(start, comma - start)));
                start = comma + 1;
            }
        }
        std::int32_t AreaCount() override { return static_cast<std::int32_t>(m_areas.size()); }
        std::int32_t RowCount() override { return m_areas[0].Rows(); }
        std::int32_t ColumnCount() override { return m_areas[0].Columns(); }
        std::int32_t CellCount() override {
            std::int32_t count = 0;
            for (const Area& area : m_areas) {
                count += area.Rows() * area.Columns();
            }
            return count;
        }
        std::string Address() override {
            const Area& area = m_areas[0];
            const std::string first = CellName(area.row1, area.column1);
            const std::string last = CellName(area.row2, area.column2);
            return first == last ? first : first + ':' + last;
        }
        ports::SheetName Sheet() override { return m_sheet; }
        void ReadValues(std::size_t firstCell, std::span<Value> values) override {
            for (std::size_t index = 0; index < values.size(); ++index) {
                const auto [row, column] = CellAt(firstCell + index);
                const auto found = m_excel.Cells.find({row, column});
                values[index] = found == m_excel.Cells.end() ? Value(EmptyValue{}) : found->second;
            }
        }
        std::string CellAddress(std::size_t cell) override {
            const auto [row, column] = CellAt(cell);
            return CellName(row, column);
        }

     private:
        static Area ParseArea(const std::string& text) {
            const std::size_t colon = text.find(':');
            const auto first = ParseCell(text.substr(0, colon));
            const auto last =
                colon == std::string::npos ? first : ParseCell(text.substr(colon + 1));
            return {first.first, first.second, last.first, last.second};
        }
        static std::pair<int, int> ParseCell(const std::string& text) {
            int row = 0;
            int column = 0;
            for (const char c : text) {
                if (c >= 'A' && c <= 'Z') {
                    column = column * 26 + (c - 'A' + 1);
                } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
                    row = row * 10 + (c - '0');
                } else if (c != '$') {
                    throw Error(1004, "Method 'Range' of object '_Application' failed");
                }
            }
            if (row == 0 || column == 0) {
                throw Error(1004, "Method 'Range' of object '_Application' failed");
            }
            return {row, column};
        }
        static std::string CellName(int row, int column) {
            return std::string("$") + static_cast<char>('A' + column - 1) + '$' +
                   std::to_string(row);
        }
        [[nodiscard]] std::pair<int, int> CellAt(std::size_t cell) const {
            const Area& area = m_areas[0];
            const int index = static_cast<int>(cell);
            return {area.row1 + index / area.Columns(), area.column1 + index % area.Columns()};
        }

        FakeExcel& m_excel;
        ports::SheetName m_sheet;
        std::vector<Area> m_areas;
    };
};

}  // namespace krv::tests
