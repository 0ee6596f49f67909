// TableHead: the lines above the values of a table: headings, the units below them, and what
// oscilloscopes write above them of the record, a name and its value in each line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "formats/TableFields.h"

namespace krv::formats {

class TableHead {
 public:
    explicit TableHead(std::string file) : m_file(std::move(file)) {}

    void AddComment(std::string_view line);
    // A line that holds something else than numbers. Throws Error 321 where it is one of values
    // with something wrong.
    void Add(std::string_view line, std::uint64_t number);
    // The table begins behind the lines.
    void EndAt(Separator separator, std::size_t columns);

    // Throws Error 321 where a line with a number may be one of values after all: no headings stand
    // between it and the values, or there are hardly any of these.
    void RequireNoDoubt(int linesOfValues) const;

    [[nodiscard]] bool IsEmpty() const noexcept { return m_lines.empty() && m_comment.empty(); }
    // The names of the columns, with their units; none where no line has as many fields.
    [[nodiscard]] std::vector<std::string> Names() const;
    // The line that would have the names; empty without any.
    [[nodiscard]] std::string_view Heading() const noexcept {
        return m_lines.empty() ? std::string_view() : std::string_view(m_lines[m_heading].text);
    }
    [[nodiscard]] std::uint64_t HeadingLine() const noexcept {
        return m_lines.empty() ? 0 : m_lines[m_heading].number;
    }
    // A sentence on lines that are neither headings nor units nor comments; empty without any.
    [[nodiscard]] std::string LeftOut() const;

 private:
    struct Line {
        std::string text;
        std::uint64_t number = 0;
        bool hasNumber = false;
    };

    [[nodiscard]] std::vector<std::string_view> Fields(const Line& line) const {
        return FieldsOf(line.text, m_separator);
    }
    [[nodiscard]] bool HasNames() const { return Fields(m_lines[m_heading]).size() == m_columns; }
    [[nodiscard]] bool HasUnits() const noexcept { return m_heading + 1 < m_lines.size(); }

    std::string m_file;
    std::vector<Line> m_lines;
    std::string m_comment;
    // Of the first line that has a number.
    std::optional<Error> m_fault;
    Separator m_separator = Separator::Blanks;
    std::size_t m_columns = 0;
    std::size_t m_heading = 0;
};

}  // namespace krv::formats
