#include "bench/book/RangeText.h"

#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr std::size_t LongestText = 255;
constexpr std::int32_t NoneGiven = -1;

// A cell ("A1"), a column ("A") or a row ("1") at one side of a colon.
struct RangeEnd {
    CellPosition position{NoneGiven, NoneGiven};
    [[nodiscard]] bool IsCell() const {
        return position.row != NoneGiven && position.column != NoneGiven;
    }
    [[nodiscard]] bool IsColumn() const { return position.row == NoneGiven; }
};

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

class RangeTextParser {
 public:
    explicit RangeTextParser(std::string_view text) : m_rest(text) {}

    std::optional<RangeReference> Parse() {
        do {
            if (!ReadSheetName() || !ReadArea()) {
                return std::nullopt;
            }
        } while (Takes(','));
        return m_rest.empty() ? std::optional(m_found) : std::nullopt;
    }

 private:
    void SkipBlanks() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
    }

    bool Takes(char expected) {
        SkipBlanks();
        if (m_rest.empty() || m_rest.front() != expected) {
            return false;
        }
        m_rest.remove_prefix(1);
        SkipBlanks();
        return true;
    }

    // Reads "Name!" where it stands; all areas lie on one sheet.
    bool ReadSheetName() {
        SkipBlanks();
        const std::size_t end = m_rest.find_first_of("!,:");
        if (end == std::string_view::npos || m_rest[end] != '!') {
            return true;
        }
        const std::string name(m_rest.substr(0, end));
        m_rest.remove_prefix(end + 1);
        const bool fits = m_found.areas.empty() || name == m_found.sheetName;
        m_found.sheetName = name;
        return fits && !name.empty();
    }

    bool ReadArea() {
        const std::optional<RangeEnd> first = ReadEnd();
        if (!first) {
            return false;
        }
        if (!Takes(':')) {
            m_found.areas.push_back({first->position.row, first->position.column, 1, 1});
            return first->IsCell();
        }
        const std::optional<RangeEnd> last = ReadEnd();
        if (!last || first->IsCell() != last->IsCell() || first->IsColumn() != last->IsColumn()) {
            return false;
        }
        m_found.areas.push_back(Between(*first, *last));
        return true;
    }

    static CellArea Between(const RangeEnd& first, const RangeEnd& last) {
        CellArea area = AreaBetween(first.position, last.position);
        if (first.IsCell()) {
            return area;
        }
        if (first.IsColumn()) {
            return {0, area.column, SheetLimit::Rows, area.columns};
        }
        return {area.row, 0, area.rows, SheetLimit::Columns};
    }

    std::optional<RangeEnd> ReadEnd() {
        RangeEnd end;
        bool fixed = TakesDollar();
        if (!m_rest.empty() && IsLetter(m_rest.front())) {
            end.position.column = ReadNumber(IsLetter, 26, 'A', SheetLimit::Columns);
            if (end.position.column < 0) {
                return std::nullopt;
            }
            fixed = TakesDollar();
        }
        if (!m_rest.empty() && IsDigit(m_rest.front())) {
            end.position.row = ReadNumber(IsDigit, 10, '1', SheetLimit::Rows);
            if (end.position.row < 0) {
                return std::nullopt;
            }
            fixed = false;
        }
        return fixed || end.position == RangeEnd().position ? std::nullopt : std::optional(end);
    }

    bool TakesDollar() {
        const bool found = !m_rest.empty() && m_rest.front() == '$';
        m_rest.remove_prefix(found ? 1 : 0);
        return found;
    }

    // Digits of a number system whose digit `one` counts one, as a position from 0; below 0 when it
    // lies outside the sheet.
    std::int32_t ReadNumber(bool (*isDigit)(char), std::int32_t base, char one,
                            std::int32_t limit) {
        std::int32_t number = 0;
        while (!m_rest.empty() && isDigit(m_rest.front())) {
            const char digit = m_rest.front() >= 'a' ? static_cast<char>(m_rest.front() - 'a' + 'A')
                                                     : m_rest.front();
            number = number > limit ? number : number * base + (digit - one) + 1;
            m_rest.remove_prefix(1);
        }
        return number > limit ? NoneGiven : number - 1;
    }

    std::string_view m_rest;
    RangeReference m_found;
};

}  // namespace

std::optional<RangeReference> ParseRangeText(std::string_view text) {
    if (CharacterCount(text) > LongestText) {
        return std::nullopt;
    }
    return RangeTextParser(TrimBlanks(text)).Parse();
}

}  // namespace krv::bench
