#include <algorithm>
#include <iomanip>
#include <ostream>

#include "cli/Commands.h"
#include "cli/Defaults.h"
#include "cli/ExitCode.h"
#include "cli/JsonOutput.h"

namespace krv::cli {
namespace {

void PrintDefaults(const Environment& environment, std::ostream& out) {
    const Defaults defaults(environment);
    std::size_t width = 0;
    for (const DefaultValue& each : defaults.All()) {
        width = std::max(width, each.value.size());
    }
    for (const DefaultValue& each : defaults.All()) {
        out << std::left << std::setw(9) << each.name << std::setw(static_cast<int>(width) + 2)
            << each.value << (each.value.empty() ? "not set" : each.origin) << '\n';
    }
    if (!environment.configFile.empty()) {
        out << "The configuration file is " << environment.configFile << '\n';
    }
}

// As they are when the command is done.
void DescribeDefaults(const Environment& environment, CommandOutput& output) {
    const Defaults defaults(environment);
    OutputJson settings = OutputJson::array();
    for (const DefaultValue& each : defaults.All()) {
        settings.push_back(
            {{"name", each.name},
             {"value", TextOrNull(each.value)},
             {"origin", TextOrNull(each.value.empty() ? std::string() : each.origin)}});
    }
    output["settings"] = settings;
    output["file"] = TextOrNull(environment.configFile);
}

void RequireWords(const ConfigArguments& arguments, std::size_t count, const char* usage) {
    if (arguments.words.size() != count) {
        throw UsageError(usage);
    }
}

}  // namespace

int RunConfig(const ConfigArguments& arguments, Console& console) {
    const Environment& environment = console.environment;
    const auto& words = arguments.words;
    CommandOutput output(console.out, arguments.json);
    switch (arguments.action) {
        case ConfigAction::Show:
            PrintDefaults(environment, output.Text());
            break;
        case ConfigAction::Set:
            RequireWords(arguments, 2, "krv config set takes the name of a setting and its value.");
            SetDefault(environment, words[0], words[1]);
            break;
        case ConfigAction::Unset:
            RequireWords(arguments, 1, "krv config unset takes the name of a setting.");
            if (!UnsetDefault(environment, words[0])) {
                output.Text() << environment.configFile << " doesn't set " << words[0] << '\n';
            }
            break;
    }
    if (arguments.json) {
        DescribeDefaults(environment, output);
        output.Finish();
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
