// BookRange: some cells of a workbook, as automation callers hold them. A value: it shares the
// workbook, and every use after the book has gone throws Error 424. Positions in it count from 1
// and may lie outside it, but not off the sheet (Error 1004).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/book/Workbook.h"

namespace krv::bench {

class BookRange {
 public:
    // The areas must not be empty and must lie on the sheet.
    BookRange(const std::shared_ptr<Workbook>& book, std::vector<CellArea> areas)
        : m_book(book), m_areas(std::move(areas)) {}

    [[nodiscard]] std::shared_ptr<Workbook> Book() const;
    [[nodiscard]] const std::vector<CellArea>& Areas() const { return m_areas; }
    // What most members of a range with several areas speak of.
    [[nodiscard]] const CellArea& FirstArea() const { return m_areas.front(); }

    // Throws Error 6 when there are more than 2147483647 cells.
    [[nodiscard]] std::int32_t Count() const;
    [[nodiscard]] std::string Address() const { return AddressOf(m_areas); }

    [[nodiscard]] BookRange Item(std::int64_t row, std::int64_t column) const;
    [[nodiscard]] BookRange Area(std::int64_t index) const;
    // Without a number the size stays.
    [[nodiscard]] BookRange Resize(std::optional<std::int64_t> rows,
                                   std::optional<std::int64_t> columns) const;

 private:
    [[nodiscard]] BookRange At(std::int64_t row, std::int64_t column, std::int64_t rows,
                               std::int64_t columns) const;

    std::weak_ptr<Workbook> m_book;
    std::vector<CellArea> m_areas;
};

}  // namespace krv::bench
