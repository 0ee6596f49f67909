#include "formats/TableHead.h"

#include <algorithm>
#include <array>

#include "common/Text.h"
#include "formats/Counted.h"
#include "formats/Fault.h"
#include "formats/TimeUnits.h"

namespace krv::formats {
namespace {

// Besides those of time.
constexpr std::array<std::string_view, 14> Units{"V",      "VOLT",      "VOLTS",     "KV", "MV",
                                                 "UV",     "\xC2\xB5V", "\xCE\x9CV", "A",  "MA",
                                                 "AMPERE", "W",         "DBM",       "%"};

bool IsUnit(std::string_view field) {
    const bool isInside = field.size() > 2 && (field.front() == '(' || field.front() == '[');
    const std::string name = UpperCase(isInside ? field.substr(1, field.size() - 2) : field);
    return TimeUnit(name) || std::ranges::find(Units, name) != Units.end();
}

std::size_t CharacterColumn(std::string_view line, std::string_view field) {
    return static_cast<std::size_t>(field.data() - line.data()) + 1;
}

}  // namespace

void TableHead::AddComment(std::string_view line) {
    m_comment = line.substr(std::min(line.find_first_not_of(" \t#%/"), line.size()));
}

void TableHead::Add(std::string_view line, std::uint64_t number) {
    const Separator separator = SeparatorOf(line);
    const std::vector<std::string_view> fields = FieldsOf(line, separator);
    const auto isReal = [&](std::string_view field) {
        return IsRealNumber(field, NumbersBetween(separator));
    };
    const bool hasNumber = separator != Separator::Blanks && std::ranges::any_of(fields, isReal);
    if (hasNumber) {
        const auto bad = std::ranges::find_if_not(fields, isReal);
        const Error fault = LineFault(
            m_file, number, CharacterColumn(line, *bad),
            bad->empty() ? "A value is missing." : QuotedExcerpt(*bad) + " is not a number.");
        const bool isBehindFault = !m_lines.empty() && m_lines.back().hasNumber;
        if (bad != fields.begin() || bad->empty()) {
            throw isBehindFault ? *m_fault : fault;
        }
        m_fault = m_fault.value_or(fault);
    }
    m_heading = m_lines.size();
    m_lines.push_back({std::string(line), number, hasNumber});
}

void TableHead::EndAt(Separator separator, std::size_t columns) {
    m_separator = separator;
    m_columns = columns;
    if (m_lines.size() < 2) {
        return;
    }
    const auto last = Fields(m_lines[m_heading]);
    const bool areUnits = last.size() == columns && std::ranges::all_of(last, IsUnit);
    if (areUnits && Fields(m_lines[m_heading - 1]).size() == columns) {
        --m_heading;
    }
}

void TableHead::RequireNoDoubt(int linesOfValues) const {
    if (!m_fault) {
        return;
    }
    const bool isClear = !m_lines.empty() && linesOfValues > 1 && m_columns > 1 && HasNames() &&
                         (HasUnits() || !m_lines[m_heading].hasNumber);
    if (!isClear) {
        throw *m_fault;
    }
}

std::vector<std::string> TableHead::Names() const {
    std::vector<std::string> names;
    if (!m_lines.empty() && HasNames()) {
        const auto fields = Fields(m_lines[m_heading]);
        names.assign(fields.begin(), fields.end());
        const auto units = HasUnits() ? Fields(m_lines.back()) : std::vector<std::string_view>();
        for (std::size_t k = 0; k < units.size(); ++k) {
            const bool isInside = units[k].front() == '(' || units[k].front() == '[';
            names[k] += isInside ? ' ' + std::string(units[k]) : " (" + std::string(units[k]) + ')';
        }
        return names;
    }
    // A comment of one word is more likely to be a remark.
    const auto fields = FieldsOf(m_comment, m_separator);
    if (fields.size() == m_columns && m_columns > 1) {
        names.assign(fields.begin(), fields.end());
    }
    return names;
}

std::string TableHead::LeftOut() const {
    const bool hasNames = !m_lines.empty() && HasNames();
    const std::size_t count = hasNames ? m_heading : m_lines.size();
    return count == 0 ? std::string()
                      : "Left out: " + Counted(count, "line") + " above the " +
                            (hasNames ? "headings." : "values.");
}

}  // namespace krv::formats
