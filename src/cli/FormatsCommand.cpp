#include <iomanip>
#include <ostream>

#include "cli/Commands.h"
#include "cli/ExitCode.h"
#include "formats/Formats.h"

namespace krv::cli {

int RunFormats(Console& console) {
    for (const formats::Format& format : formats::AllFormats()) {
        console.out << std::left << std::setw(15) << format.name << format.reads << '\n';
        if (format.lacks != nullptr) {
            console.out << std::setw(15) << ""
                        << "not by this build: it lacks " << format.lacks << '\n';
        }
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
