// Tables of numbers as text: CSV, columns between tabs or blanks, complex numbers.
#include <algorithm>
#include <functional>
#include <utility>

#include "common/NearestRounding.h"
#include "common/QuickNumbers.h"
#include "common/Text.h"
#include "formats/Fault.h"
#include "formats/Readers.h"
#include "formats/TableLayout.h"

namespace krv::formats {
namespace {

// With a blank or a comma between, a value takes two characters.
constexpr std::uint64_t FewestBytes = 2;

std::string TableFormat(const TableLayout& layout, Encoding encoding) {
    std::string format = "text table";
    switch (layout.separator) {
        case Separator::Blanks:
            break;
        case Separator::Tab:
            format += ", tabs";
            break;
        case Separator::Comma:
            format += ", commas";
            break;
        case Separator::Semicolon:
            format += ", semicolons";
            break;
    }
    return format + (encoding == Encoding::Utf8 ? "" : ", UTF-16");
}

About AboutTable(const TableLayout& layout, const Opening& opening) {
    About about;
    about.format = TableFormat(layout, EncodingOf(opening.beginning));
    for (std::size_t field = 0; field < layout.isComplex.size(); ++field) {
        const std::string name = layout.names.empty() ? std::string() : layout.names[field];
        if (layout.isComplex[field]) {
            about.isComplex = true;
            const std::string prefix = layout.isComplex.size() > 1
                                           ? (name.empty() ? std::to_string(field + 1) : name) + '.'
                                           : std::string();
            about.columns.push_back({prefix + "I", 0, false, 0});
            about.columns.push_back({prefix + "Q", 0, false, 0});
        } else {
            about.columns.push_back({name, 0, false, 0});
        }
    }
    if (!layout.leftOut.empty()) {
        about.notes.push_back(layout.leftOut);
    }
    about.mostFrames = opening.size / FewestBytes / layout.isComplex.size() + 1;
    return about;
}

class TextTable final : public Recording {
 public:
    TextTable(const Opening& opening, TableLayout layout)
        : Recording(AboutTable(layout, opening)),
          m_file(opening.file.name),
          m_text(opening.file),
          m_layout(std::move(layout)),
          m_width(Description().columns.size()),
          m_isPlain(m_layout.separator != Separator::Blanks &&
                    Mark() != m_layout.numbers.decimalSeparator &&
                    std::ranges::none_of(m_layout.isComplex, std::identity())) {
        std::string_view line;
        while (m_text.Line() + 1 < m_layout.firstLine && m_text.NextLine(line)) {
        }
    }

    std::size_t Read(std::span<double> values) override {
        const std::size_t most = values.size() / m_width;
        const NearestRounding nearest;
        std::size_t frames = 0;
        std::string_view line;
        for (;;) {
            frames += m_isPlain ? ReadPlainLines(values.subspan(frames * m_width)) : 0;
            if (frames == most || !m_text.NextLine(line)) {
                return frames;
            }
            if (!line.empty() && (IsDigit(line.front()) || !IsCommentLine(line))) {
                ReadLine(line, values.subspan(frames * m_width, m_width));
                ++frames;
            }
        }
    }

 private:
    static bool IsDigit(char character) noexcept { return character >= '0' && character <= '9'; }

    // The way of nearly all lines: numbers with the separator between them. Stops in front of any
    // other line, and where there is no room left; returns the number of lines.
    std::size_t ReadPlainLines(std::span<double> values) {
        const std::string_view text = m_text.WholeLines();
        const std::size_t most = values.size() / m_width;
        const char* at = text.data();
        std::size_t lines = 0;
        while (lines < most && at < text.data() + text.size()) {
            const char* const next = ReadPlainLine(at, values.data() + lines * m_width);
            if (next == nullptr) {
                break;
            }
            at = next;
            ++lines;
        }
        m_text.Skip(static_cast<std::size_t>(at - text.data()), lines);
        return lines;
    }
    // What stands behind the line; null where it is another kind of line.
    const char* ReadPlainLine(const char* at, double* values) const {
        for (std::size_t column = 0; column < m_width; ++column) {
            if (column > 0 && *at++ != Mark()) {
                return nullptr;
            }
            while (*at == ' ') {
                ++at;
            }
            at = quick::ReadNumber(at, m_layout.numbers.decimalSeparator, values[column]);
            if (at == nullptr) {
                return nullptr;
            }
        }
        at += *at == '\r' ? 1 : 0;
        return *at == '\n' ? at + 1 : nullptr;
    }
    [[nodiscard]] char Mark() const noexcept { return static_cast<char>(m_layout.separator); }

    void ReadLine(std::string_view line, std::span<double> values) const {
        if (m_layout.separator == Separator::Blanks && m_layout.isComplex.size() == 1 &&
            m_layout.isComplex[0]) {
            StoreComplex(line, TrimWhite(line), values);
            return;
        }
        std::string_view rest = line;
        std::size_t at = 0;
        for (const bool isComplex : m_layout.isComplex) {
            std::string_view field;
            if (!TakePlainField(rest, field) && !TakeField(rest, m_layout.separator, field)) {
                throw Fault(line, line.size(), "The line has fewer values than the first one.");
            }
            if (isComplex) {
                StoreComplex(line, field, values.subspan(at, 2));
                at += 2;
            } else {
                values[at++] = Number(line, field);
            }
        }
        if (!TrimWhite(rest).empty()) {
            throw Fault(line, Place(line, rest), "The line has more values than the first one.");
        }
    }

    // The way of nearly all fields: a number and then the separator.
    bool TakePlainField(std::string_view& rest, std::string_view& field) const {
        std::size_t end = 0;
        while (end < rest.size() && rest[end] > ' ' && rest[end] != Mark() && rest[end] != '"' &&
               rest[end] != '(') {
            ++end;
        }
        if (end == 0 || (end < rest.size() && rest[end] != Mark())) {
            return false;
        }
        field = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return true;
    }

    [[nodiscard]] double Number(std::string_view line, std::string_view field) const {
        const ParsedNumber number = ParseNumber(field, m_layout.numbers);
        if (number.error != NumberTextError::None) {
            throw Fault(line, Place(line, field), WhatIsWrong(field, number.error));
        }
        return number.value;
    }

    void StoreComplex(std::string_view line, std::string_view field,
                      std::span<double> values) const {
        if (const auto number = ParseComplex(field, m_layout.numbers)) {
            values[0] = number->re;
            values[1] = number->im;
            return;
        }
        // A number without an imaginary part.
        values[0] = Number(line, field);
        values[1] = 0;
    }

    static std::string WhatIsWrong(std::string_view field, NumberTextError error) {
        return field.empty()                          ? "A value is missing."
               : error == NumberTextError::OutOfRange ? QuotedExcerpt(field) + " is too large."
                                                      : QuotedExcerpt(field) + " is not a number.";
    }

    static std::size_t Place(std::string_view line, std::string_view field) {
        return static_cast<std::size_t>(field.data() - line.data());
    }
    // At a place in the line, in bytes from 0.
    [[nodiscard]] Error Fault(std::string_view line, std::size_t place,
                              std::string_view what) const {
        return LineFault(m_file, m_text.Line(), CharacterCount(line.substr(0, place)) + 1, what);
    }

    std::string m_file;
    TableText m_text;
    TableLayout m_layout;
    std::size_t m_width;
    // Real numbers between marks.
    bool m_isPlain;
};

}  // namespace

bool IsTable(const Opening& opening) {
    if (EncodingOf(opening.beginning) != Encoding::Utf8) {
        return true;
    }
    return std::ranges::none_of(TextOf(opening.beginning), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte < ' ' &&
               std::string_view("\t\r\n\f\x1A").find(character) == std::string_view::npos;
    });
}

std::unique_ptr<Recording> OpenTable(const Opening& opening) {
    TableLayout layout = FindTableLayout(opening.file);
    if (layout.isAmbiguous && !opening.options.columnsAreNamed) {
        throw FileFault(opening.file.name + ", line " + std::to_string(layout.firstLine),
                        "The comma may stand between two values or in one number. Say that these "
                        "are two columns by naming them, as in FILE:1,2.");
    }
    return std::make_unique<TextTable>(opening, std::move(layout));
}

}  // namespace krv::formats
