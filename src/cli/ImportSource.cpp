#include "cli/ImportSource.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string_view>
#include <utility>

#include "cli/ExitCode.h"
#include "cli/Messages.h"
#include "cli/Platform.h"
#include "cli/Quantity.h"
#include "common/Error.h"
#include "formats/Counted.h"
#include "formats/Readers.h"
#include "formats/TableLayout.h"

namespace krv::cli {
namespace {

std::vector<std::string> ColumnNames(std::string_view list) {
    std::vector<std::string> names;
    for (;;) {
        const std::size_t comma = list.find(',');
        names.emplace_back(list.substr(0, comma));
        if (comma == std::string_view::npos) {
            return names;
        }
        list.remove_prefix(comma + 1);
    }
}

std::optional<std::uint64_t> WholeNumber(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

// FIRST:COUNT, or FIRST: for all from there on.
void ReadRange(const std::string& text, formats::ImportOptions& options) {
    const std::size_t colon = text.find(':');
    const auto first = WholeNumber(std::string_view(text).substr(0, colon));
    const std::string_view rest =
        colon == std::string::npos ? std::string_view() : std::string_view(text).substr(colon + 1);
    const auto count = WholeNumber(rest);
    const bool isOpen = colon != std::string::npos && rest.empty();
    if (!first || (!isOpen && !count) || count == 0U) {
        throw UsageError(
            "--range takes the first point, counted from 0, and how many there are, as "
            "in 100:2000; 100: takes all from there on.");
    }
    options.firstPoint = *first;
    options.points = count;
}

double ReadRate(const std::string& text, NumberFormat format) {
    const double rate = ParseFrequency("--resample-to", text, format);
    if (!(rate > 0)) {
        throw UsageError("--resample-to takes a sample rate above zero, as in 100MHz.");
    }
    return rate;
}

// Text that the dialog wouldn't take for numbers between blanks.
bool NeedsTableReader(const formats::InputFile& file) {
    const formats::TableLayout layout = formats::FindTableLayout(file);
    const bool isMarked = layout.separator == formats::Separator::Comma ||
                          layout.separator == formats::Separator::Semicolon;
    const bool isWide = formats::TableText(file).TextEncoding() != formats::Encoding::Utf8;
    const bool isComplex = std::ranges::find(layout.isComplex, true) != layout.isComplex.end();
    return isWide || isComplex || layout.hasTextBefore || (isMarked && !layout.isAmbiguous);
}

}  // namespace

SourceName SplitSource(const std::string& text, ports::FileSystem& files) {
    const std::size_t colon = text.rfind(':');
    const std::string file = text.substr(0, colon);
    const bool hasColumns = colon != std::string::npos && colon + 1 < text.size() &&
                            !files.FileExists(text) &&
                            (file == StandardInputName || files.FileExists(file));
    return hasColumns ? SourceName{file, ColumnNames(std::string_view(text).substr(colon + 1))}
                      : SourceName{text, {}};
}

bool SaysHowToImport(const ImportArguments& arguments) {
    return arguments.raw || arguments.range || arguments.resampleTo || arguments.normalize;
}

formats::ImportOptions ReadImportOptions(const ImportArguments& arguments, NumberFormat format) {
    formats::ImportOptions options;
    if (arguments.raw) {
        options.raw = formats::ParseSampleLayout(*arguments.raw);
        if (!options.raw) {
            throw UsageError(
                "--raw takes c or r for complex or real, i, u or f for integers, "
                "unsigned ones or floats, the bits of a value, and _le or _be, as in "
                "ci16_le.");
        }
    }
    if (arguments.range) {
        ReadRange(*arguments.range, options);
    }
    if (arguments.resampleTo) {
        options.resampleTo = ReadRate(*arguments.resampleTo, format);
    }
    return options;
}

bool IsForImport(const std::string& file, ports::FileSystem& files) {
    if (!files.FileExists(file)) {
        return false;
    }
    const formats::InputFile input{files, file};
    try {
        const formats::Format* const format = formats::RecogniseFormat(input);
        return format != nullptr && (format->open != formats::OpenTable || NeedsTableReader(input));
    } catch (const Error&) {
        // The dialog says what is wrong with it.
        return false;
    }
}

void TakeStandardInput(const std::string& file, Console& console, ImportedFiles& files) {
    if (file != StandardInputName || files.Holds(file)) {
        return;
    }
    MakeInputBinary();
    const auto content = std::make_shared<std::vector<std::byte>>();
    constexpr std::size_t Block = std::size_t{1} << 20U;
    for (std::size_t size = 0;;) {
        content->resize(size + Block);
        const std::span<std::byte> room = std::span(*content).subspan(size);
        console.in.read(reinterpret_cast<char*>(room.data()), Block);
        size += static_cast<std::size_t>(console.in.gcount());
        if (!console.in) {
            content->resize(size);
            break;
        }
    }
    files.Put(file,
              {content->size(), [content] { return formats::SharedBytes(content, *content); }});
}

formats::SharedWaveform ReadToShow(const SourceName& source, const ImportArguments& arguments,
                                   Console& console, ImportedFiles& files) {
    formats::ImportOptions options = ReadImportOptions(arguments, console.numberFormat);
    options.columns = source.columns;
    options.peakPercent = arguments.normalize ? std::optional(100.0) : std::nullopt;
    TakeStandardInput(source.file, console, files);
    return std::make_shared<const formats::ImportedWaveform>(
        formats::Import(files.Input(source.file), options, [] {}));
}

std::vector<std::string> ImportLines(const formats::ImportedWaveform& waveform) {
    std::string first = waveform.format + "; " + formats::Counted(waveform.Points(), "point");
    if (waveform.sampleRate) {
        first += " at " + NumberToText(*waveform.sampleRate) + " Hz";
    }
    std::vector<std::string> lines{first + '.'};
    lines.insert(lines.end(), waveform.done.begin(), waveform.done.end());
    return lines;
}

void PrintImport(const formats::ImportedWaveform& waveform, std::ostream& out, std::ostream& err) {
    for (const std::string& warning : waveform.warnings) {
        PrintWarning(err, warning);
    }
    const char* heading = "Imported:     ";
    for (const std::string& line : ImportLines(waveform)) {
        out << heading << line << '\n';
        heading = "              ";
    }
}

}  // namespace krv::cli
