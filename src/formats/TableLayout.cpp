#include "formats/TableLayout.h"

#include <algorithm>

#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/TableHead.h"

namespace krv::formats {
namespace {

// What stands in front of the values is shorter.
constexpr int MostLinesBefore = 200;
// So many lines of values are looked at.
constexpr int LinesToLookAt = 20;

// The imaginary unit alone, without a sign, is the name of a column here.
bool IsComplex(std::string_view field, NumberFormat format) {
    return field.find_first_of("0123456789+-") != std::string_view::npos &&
           ParseComplex(field, format);
}

// Between commas a comma of a number's own stands in quotes.
constexpr NumberFormat QuotedNumbers{','};

class LayoutSearch {
 public:
    explicit LayoutSearch(const InputFile& file)
        : m_file(file.name), m_text(file), m_head(file.name) {}

    TableLayout Find() {
        std::string_view line;
        for (int count = 0; count < MostLinesBefore && m_text.NextLine(line); ++count) {
            if (IsCommentLine(line)) {
                m_head.AddComment(line);
            } else if (IsOfValues(line)) {
                TakeTable(line);
                return m_layout;
            } else {
                m_head.Add(line, m_text.Line());
            }
        }
        m_head.RequireNoDoubt(0);
        throw FileFault(m_file, WhyNoTable());
    }

 private:
    void TakeTable(std::string_view line) {
        const std::size_t columns = m_layout.isComplex.size();
        m_layout.firstLine = m_text.Line();
        m_layout.hasTextBefore = !m_head.IsEmpty();
        m_head.EndAt(m_layout.separator, columns);
        m_layout.names = m_head.Names();
        m_layout.leftOut = m_head.LeftOut();
        LookAtMore(line);
        m_head.RequireNoDoubt(m_linesOfValues);
        RequireHeading();
    }

    [[nodiscard]] std::string WhyNoTable() const {
        if (m_text.Line() == 0) {
            return "The file is empty.";
        }
        const std::string what = "It holds no table of numbers";
        return m_head.Heading().empty()
                   ? what + '.'
                   : what + ": line " + std::to_string(m_head.HeadingLine()) + ", " +
                         QuotedExcerpt(m_head.Heading()) +
                         ", isn't numbers between commas, semicolons, tabs or blanks.";
    }

    // All fields are numbers; the layout is then that of the line.
    bool IsOfValues(std::string_view line) {
        m_layout.separator = SeparatorOf(line);
        m_layout.numbers = NumbersBetween(m_layout.separator);
        m_layout.isComplex.clear();
        if (HasQuotedNumbers(line)) {
            m_layout.numbers = QuotedNumbers;
        }
        // Blanks may stand within a complex number, too.
        if (m_layout.separator == Separator::Blanks && IsComplex(line, m_layout.numbers)) {
            m_layout.isComplex = {true};
            return true;
        }
        for (const std::string_view field : FieldsOf(line, m_layout.separator)) {
            const bool isReal = IsRealNumber(field, m_layout.numbers);
            if (!isReal && !IsComplex(field, m_layout.numbers)) {
                return false;
            }
            m_layout.isComplex.push_back(!isReal);
        }
        return true;
    }

    // All fields between commas are numbers with a decimal comma or without decimals, and there is
    // one with a comma.
    [[nodiscard]] bool HasQuotedNumbers(std::string_view line) const {
        const auto fields = FieldsOf(line, Separator::Comma);
        return m_layout.separator == Separator::Comma && std::ranges::any_of(fields, HasComma) &&
               std::ranges::all_of(fields, IsQuotedNumber);
    }
    static bool HasComma(std::string_view field) {
        return field.find(',') != std::string_view::npos;
    }
    static bool IsQuotedNumber(std::string_view field) {
        return field.find('.') == std::string_view::npos && IsRealNumber(field, QuotedNumbers);
    }
    // "1,234" may be a thousand and more.
    static bool MayBeGrouped(std::string_view field) {
        field.remove_prefix(std::min(field.find_first_not_of("+-"), field.size()));
        const std::size_t comma = field.find(',');
        return HasComma(field) && comma >= 1 && comma <= 3 && field.front() != '0' &&
               field.size() - comma == 4;
    }

    // Above complex numbers the imaginary unit might be one of them.
    void RequireHeading() const {
        if (m_layout.isComplex.front() && ParseComplex(m_head.Heading(), m_layout.numbers)) {
            throw LineFault(m_file, m_head.HeadingLine(), 1,
                            QuotedExcerpt(m_head.Heading()) +
                                " may be a value or the name of the column. Write 0+1i for the "
                                "value.");
        }
    }

    // Some things show only in later lines.
    void LookAtMore(std::string_view line) {
        const bool isComma = m_layout.separator == Separator::Comma;
        bool mayBeDecimal = isComma && m_layout.isComplex.size() == 2 && m_layout.names.empty();
        int count = 0;
        do {
            const auto fields = FieldsOf(line, m_layout.separator);
            for (std::size_t k = 0; k < std::min(fields.size(), m_layout.isComplex.size()); ++k) {
                const bool isComplex = ParseComplex(fields[k], m_layout.numbers).has_value();
                m_layout.isComplex[k] = m_layout.isComplex[k] || isComplex;
            }
            mayBeDecimal = mayBeDecimal && line.find_first_of(".eE ") == std::string_view::npos;
            if (IsCommentLine(line)) {
                continue;
            }
            ++m_linesOfValues;
            if (isComma) {
                LookForQuotedNumbers(fields);
            }
        } while (++count < LinesToLookAt && m_text.NextLine(line));
        TakeQuotedNumbers();
        m_layout.isAmbiguous = mayBeDecimal && !m_hasQuoted;
    }

    void LookForQuotedNumbers(const std::vector<std::string_view>& fields) {
        for (const std::string_view field : fields) {
            m_isQuotable = m_isQuotable && IsQuotedNumber(field);
            m_hasQuoted = m_hasQuoted || HasComma(field);
            m_isGrouped = m_isGrouped && (!HasComma(field) || MayBeGrouped(field));
        }
    }
    void TakeQuotedNumbers() {
        if (m_layout.separator != Separator::Comma) {
            return;
        }
        const bool areQuoted = m_hasQuoted && m_isQuotable;
        m_layout.numbers = areQuoted ? QuotedNumbers : NumbersBetween(Separator::Comma);
        if (areQuoted && m_isGrouped) {
            throw FileFault(m_file + ", line " + std::to_string(m_layout.firstLine),
                            "The commas in quotes may stand in front of decimals or of thousands. "
                            "Write the numbers with decimal points.");
        }
    }

    std::string m_file;
    TableText m_text;
    TableLayout m_layout;
    TableHead m_head;
    int m_linesOfValues = 0;
    // Of the lines with values that were looked at: all fields may be numbers with a decimal comma
    // in quotes, there are commas in quotes, and all of these may stand in front of thousands.
    bool m_isQuotable = true;
    bool m_hasQuoted = false;
    bool m_isGrouped = true;
};

}  // namespace

bool IsCommentLine(std::string_view line) noexcept {
    line = TrimWhite(line);
    return line.empty() || line.front() == '#' || line.front() == '%' || line.starts_with("//");
}

TableLayout FindTableLayout(const InputFile& file) {
    return LayoutSearch(file).Find();
}

}  // namespace krv::formats
