#include <iomanip>
#include <ostream>

#include "cli/Commands.h"
#include "cli/ExitCode.h"
#include "cli/JsonOutput.h"
#include "formats/Formats.h"

namespace krv::cli {

namespace {

OutputJson FormatsJson() {
    OutputJson list = OutputJson::array();
    for (const formats::Format& format : formats::AllFormats()) {
        list.push_back({{"name", format.name},
                        {"reads", format.reads},
                        {"lacks", TextOrNull(format.lacks == nullptr ? "" : format.lacks)}});
    }
    return {{"formats", list}};
}

}  // namespace

int RunFormats(const FormatsArguments& arguments, Console& console) {
    if (arguments.json) {
        PrintJson(FormatsJson(), console.out);
        return ExitCode::Done;
    }
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
