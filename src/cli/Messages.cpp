#include "cli/Messages.h"

#include <ostream>

#include "cli/PrintableStream.h"

namespace krv::cli {
namespace {

const char* SequenceOf(Style style) {
    switch (style) {
        case Style::Error:
            return "\x1b[1;31m";
        case Style::Warning:
            return "\x1b[1;33m";
        default:
            return "\x1b[0m";
    }
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, Style style) {
    if (auto* const printable = dynamic_cast<PrintableStream*>(&stream)) {
        printable->WriteSequence(SequenceOf(style));
    }
    return stream;
}

void PrintFailure(std::ostream& err, std::string_view text) {
    err << Style::Error << "krv:" << Style::Plain << ' ' << text << '\n';
}

void PrintWarning(std::ostream& err, std::string_view text) {
    err << "krv: " << Style::Warning << "Warning:" << Style::Plain << ' ' << text << '\n';
}

}  // namespace krv::cli
