// ImportSource: what a command line says of a file of another program: its name, its columns and
// what is to be done with it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/ImportedFiles.h"
#include "common/Numbers.h"
#include "formats/Import.h"
#include "formats/ProductFiles.h"

namespace krv::cli {

// What standard input is called.
inline constexpr const char* StandardInputName = "-";

struct SourceName {
    std::string file;
    // Behind the file's name, as in "wave.csv:I,Q"; empty without any.
    std::vector<std::string> columns;
};

// A colon is the beginning of columns where what stands in front of it is a file and the whole
// isn't one.
[[nodiscard]] SourceName SplitSource(const std::string& text, ports::FileSystem& files);

// Whether one of the options is given.
[[nodiscard]] bool SaysHowToImport(const ImportArguments& arguments);

// Throws UsageError for an option that can't be meant.
[[nodiscard]] formats::ImportOptions ReadImportOptions(const ImportArguments& arguments,
                                                       NumberFormat format);

// The file holds something that the dialog's own readers don't take: it is of a known format, and
// no text of numbers between blanks.
[[nodiscard]] bool IsForImport(const std::string& file, ports::FileSystem& files);

// Reads standard input to its end, where the file is that, and puts it among the files, in front of
// one that has its name.
void TakeStandardInput(const std::string& file, Console& console, ImportedFiles& files);

// Reads a file to show it, standard input included, with what is to be done to it.
[[nodiscard]] formats::SharedWaveform ReadToShow(const SourceName& source,
                                                 const ImportArguments& arguments, Console& console,
                                                 ImportedFiles& files);

// The lines that tell what was read and done.
[[nodiscard]] std::vector<std::string> ImportLines(const formats::ImportedWaveform& waveform);
void PrintImport(const formats::ImportedWaveform& waveform, std::ostream& out, std::ostream& err);

}  // namespace krv::cli
