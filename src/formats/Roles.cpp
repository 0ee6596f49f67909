#include "formats/Roles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numeric>
#include <string_view>
#include <utility>

#include "common/Joined.h"
#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/TimeUnits.h"

namespace krv::formats {
namespace {

// Fewer frames don't show that a column counts on evenly.
constexpr std::size_t FramesForTime = 4;
constexpr double EvenWithin = 1e-3;

constexpr std::array<std::string_view, 6> INames{"I", "RE", "REAL", "INPHASE", "IN-PHASE", "IDATA"};
constexpr std::array<std::string_view, 6> QNames{"Q",         "IM",         "IMAG",
                                                 "IMAGINARY", "QUADRATURE", "QDATA"};
constexpr std::array<std::string_view, 4> MarkerNames{"M", "MARK", "MARKER", "MARKERS"};
constexpr std::array<std::string_view, 4> TimeNames{"T", "TIME", "ZEIT", "SECONDS"};

// "Zeit (µs)" is "ZEIT" with the unit "µS".
struct NameAndUnit {
    std::string name;
    std::string unit;
};

NameAndUnit Split(const std::string& column) {
    const std::size_t mark = column.find_first_of("([/");
    if (mark == std::string::npos) {
        return {UpperCase(TrimBlanks(column)), {}};
    }
    std::string_view unit = std::string_view(column).substr(mark + 1);
    unit = unit.substr(0, unit.find_first_of(")]"));
    return {UpperCase(TrimBlanks(column.substr(0, mark))), UpperCase(TrimBlanks(unit))};
}

class RoleSearch {
 public:
    RoleSearch(const std::string& file, const About& about, std::span<const double> firstFrames)
        : m_file(file), m_about(about), m_frames(firstFrames) {
        for (const Column& column : about.columns) {
            m_names.push_back(Split(column.name));
        }
    }

    Roles Named(const std::vector<std::string>& named) {
        if (named.size() > 3 || named.front().empty()) {
            throw FileFault(m_file, "Name a column for I, and then those for Q and markers.");
        }
        m_roles.i = Find(named[0]);
        if (named.size() > 1 && !named[1].empty()) {
            m_roles.q = Find(named[1]);
        }
        if (named.size() > 2 && !named[2].empty()) {
            m_roles.markers = Find(named[2]);
        }
        TakeTime();
        return m_roles;
    }

    Roles Found() {
        TakeTime();
        m_roles.markers = WithName(MarkerNames);
        const auto i = WithName(INames);
        if (i) {
            m_roles.i = *i;
            m_roles.q = WithName(QNames);
            TellOfOthers();
            return m_roles;
        }
        std::vector<std::size_t> others;
        for (std::size_t column = 0; column < m_names.size(); ++column) {
            if (column != m_roles.time && column != m_roles.markers) {
                others.push_back(column);
            }
        }
        if (others.empty() || others.size() > 2) {
            throw FileFault(m_file, "Say which columns are I and Q, as in FILE:1,2. There are " +
                                        Listed(AllColumns()) + '.');
        }
        m_roles.i = others[0];
        if (others.size() == 2) {
            m_roles.q = others[1];
        }
        return m_roles;
    }

 private:
    template <std::size_t N>
    [[nodiscard]] std::optional<std::size_t> WithName(
        const std::array<std::string_view, N>& names) const {
        for (std::size_t column = 0; column < m_names.size(); ++column) {
            if (std::ranges::find(names, m_names[column].name) != names.end()) {
                return column;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] std::size_t Find(const std::string& wanted) const {
        // A number is that of the column, whatever another one is called.
        std::size_t number = 0;
        const char* const last = wanted.data() + wanted.size();
        const auto [end, error] = std::from_chars(wanted.data(), last, number);
        if (error == std::errc() && end == last && number > 0 && number <= m_names.size()) {
            return number - 1;
        }
        for (std::size_t column = 0; column < m_names.size(); ++column) {
            if (EqualIgnoringCase(wanted, m_about.columns[column].name) ||
                UpperCase(wanted) == m_names[column].name) {
                return column;
            }
        }
        throw FileFault(m_file, "There is no column " + QuotedExcerpt(wanted) + ". There are " +
                                    Listed(AllColumns()) + '.');
    }

    void TellOfOthers() {
        std::vector<std::size_t> others = AllColumns();
        std::erase_if(others, [this](std::size_t column) {
            return column == m_roles.i || column == m_roles.q || column == m_roles.markers ||
                   column == m_roles.time;
        });
        if (others.empty()) {
            return;
        }
        m_roles.leftOut = "Left out: " + Listed(others) +
                          ". To take others, name the columns of I, Q and markers, as in FILE:" +
                          ExampleWith(others) + '.';
        if (FirstLike(others, Likeness::Times)) {
            m_roles.leftOut += " A column of times is called Time, as in Time (ms).";
        }
    }

    // The columns as the user may name them to have those of the others that look like Q or
    // markers.
    [[nodiscard]] std::string ExampleWith(const std::vector<std::size_t>& others) const {
        const auto q = m_roles.q ? m_roles.q : FirstLike(others, Likeness::Values);
        const auto more = FirstLike(others, Likeness::Markers);
        const auto markers = more ? more : m_roles.markers;
        std::string words = WordFor(m_roles.i);
        if (q || markers) {
            words += ',' + (q ? WordFor(*q) : std::string());
        }
        return words + (markers ? ',' + WordFor(*markers) : std::string());
    }

    enum class Likeness { Times, Markers, Values };

    [[nodiscard]] std::optional<std::size_t> FirstLike(const std::vector<std::size_t>& columns,
                                                       Likeness likeness) const {
        const auto found = std::ranges::find(
            columns, likeness, [this](std::size_t column) { return LikenessOf(column); });
        return found == columns.end() ? std::nullopt : std::optional(*found);
    }

    [[nodiscard]] Likeness LikenessOf(std::size_t column) const {
        const std::size_t width = m_names.size();
        bool rises = m_frames.size() >= FramesForTime * width;
        bool areMarkers = true;
        for (std::size_t at = column; at < m_frames.size(); at += width) {
            const double value = m_frames[at] + m_about.columns[column].zero;
            areMarkers =
                areMarkers && value >= 0 && value <= LargestMarker && value == std::trunc(value);
            rises = rises && (at < width || m_frames[at] > m_frames[at - width]);
        }
        return rises ? Likeness::Times : areMarkers ? Likeness::Markers : Likeness::Values;
    }

    // The column's name where that finds it, or else its number.
    [[nodiscard]] std::string WordFor(std::size_t column) const {
        const std::string& name = m_about.columns[column].name;
        const bool isPlain = !name.empty() && name.find_first_of(",:") == std::string::npos &&
                             name == WithoutControlCharacters(name);
        return isPlain && Find(name) == column ? name : std::to_string(column + 1);
    }

    [[nodiscard]] std::vector<std::size_t> AllColumns() const {
        std::vector<std::size_t> columns(m_names.size());
        std::iota(columns.begin(), columns.end(), std::size_t{0});
        return columns;
    }

    void TakeTime() {
        m_roles.time = WithName(TimeNames);
        if (!m_roles.time && m_names.size() > 1 && TimeUnit(m_names.front().unit)) {
            m_roles.time = 0;
        }
        if (m_roles.time) {
            const std::string& unit = m_names[*m_roles.time].unit;
            const auto known = TimeUnit(unit.empty() ? "S" : unit);
            m_roles.timeUnit = known.value_or(0);
            m_roles.unknownUnit = known ? "" : unit;
            return;
        }
        const bool tellsNothing = m_about.columns.front().fullScale == 0 &&
                                  m_about.columns.front().name.empty() && !m_about.isComplex;
        if (tellsNothing && m_names.size() > 1 && CountsOnEvenly()) {
            m_roles.time = 0;
            // Numbers of the points tell no time.
            m_roles.timeUnit = Step(1) == 1 ? 0 : 1;
        }
    }

    [[nodiscard]] double Step(std::size_t frame) const {
        const std::size_t width = m_names.size();
        return m_frames[frame * width] - m_frames[(frame - 1) * width];
    }

    [[nodiscard]] bool CountsOnEvenly() const {
        const std::size_t count = m_frames.size() / m_names.size();
        if (count < FramesForTime || !(Step(1) > 0)) {
            return false;
        }
        for (std::size_t frame = 2; frame < count; ++frame) {
            if (std::abs(Step(frame) - Step(1)) > EvenWithin * Step(1)) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] std::string Listed(std::span<const std::size_t> columns) const {
        constexpr std::size_t Most = 12;
        std::vector<std::string> described;
        for (const std::size_t column : columns.first(std::min(columns.size(), Most))) {
            described.push_back(DescribeColumn(m_about, column));
        }
        return Joined(described) + (columns.size() > Most ? " and more" : "");
    }

    const std::string& m_file;
    const About& m_about;
    std::span<const double> m_frames;
    std::vector<NameAndUnit> m_names;
    Roles m_roles;
};

}  // namespace

Roles FindRoles(const std::string& file, const About& about, const std::vector<std::string>& named,
                std::span<const double> firstFrames) {
    RoleSearch search(file, about, firstFrames);
    return named.empty() ? search.Found() : search.Named(named);
}

std::string DescribeColumn(const About& about, std::size_t column) {
    const std::string& name = about.columns[column].name;
    return "column " + std::to_string(column + 1) +
           (name.empty() ? "" : " '" + WithoutControlCharacters(name) + '\'');
}

}  // namespace krv::formats
