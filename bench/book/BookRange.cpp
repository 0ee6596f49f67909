#include "bench/book/BookRange.h"

#include <limits>

#include "bench/book/BookErrors.h"

namespace krv::bench {
namespace {

CellArea CheckedArea(std::int64_t row, std::int64_t column, std::int64_t rows,
                     std::int64_t columns) {
    const auto fits = [](std::int64_t first, std::int64_t count, std::int64_t limit) {
        return first >= 0 && count >= 1 && first < limit && count <= limit - first;
    };
    if (!fits(row, rows, SheetLimit::Rows) || !fits(column, columns, SheetLimit::Columns)) {
        throw ApplicationError("Application-defined or object-defined error");
    }
    return {static_cast<std::int32_t>(row), static_cast<std::int32_t>(column),
            static_cast<std::int32_t>(rows), static_cast<std::int32_t>(columns)};
}

}  // namespace

std::shared_ptr<Workbook> BookRange::Book() const {
    std::shared_ptr<Workbook> book = m_book.lock();
    if (!book) {
        throw Error(OfficeErrorNumber::ObjectRequired, "The workbook has been closed.");
    }
    return book;
}

std::int32_t BookRange::Count() const {
    std::int64_t cells = 0;
    for (const CellArea& area : m_areas) {
        cells += area.CellCount();
    }
    if (cells > std::numeric_limits<std::int32_t>::max()) {
        throw Error(ErrorNumber::Overflow);
    }
    return static_cast<std::int32_t>(cells);
}

BookRange BookRange::Item(std::int64_t row, std::int64_t column) const {
    return At(FirstArea().row + row - 1, FirstArea().column + column - 1, 1, 1);
}

BookRange BookRange::Area(std::int64_t index) const {
    if (index < 1 || index > static_cast<std::int64_t>(m_areas.size())) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return {Book(), {m_areas[static_cast<std::size_t>(index - 1)]}};
}

BookRange BookRange::Resize(std::optional<std::int64_t> rows,
                            std::optional<std::int64_t> columns) const {
    const CellArea& area = FirstArea();
    return At(area.row, area.column, rows.value_or(area.rows), columns.value_or(area.columns));
}

BookRange BookRange::At(std::int64_t row, std::int64_t column, std::int64_t rows,
                        std::int64_t columns) const {
    return {Book(), {CheckedArea(row, column, rows, columns)}};
}

}  // namespace krv::bench
