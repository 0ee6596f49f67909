#include "cli/Defaults.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <system_error>

#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "common/Error.h"
#include "common/Joined.h"
#include "common/NearMiss.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

struct KnownDefault {
    std::string_view name;
    std::string_view value;
    // Empty where any text may stand.
    std::vector<std::string_view> words;
};

const std::array<KnownDefault, 4>& KnownDefaults() {
    static const std::array<KnownDefault, 4> known{
        {{DefaultName::Address, "", {}},
         {DefaultName::Color, "auto", {"auto", "always", "never"}},
         {DefaultName::Quiet, "off", {"on", "off"}},
         {DefaultName::Visa, "", {}}}};
    return known;
}

// What is wrong with a setting; empty where it may stand.
std::string SettingFault(const std::string& name, const std::string& value) {
    const auto& all = KnownDefaults();
    const auto known = std::ranges::find(all, name, &KnownDefault::name);
    if (known == all.end()) {
        return "There is no setting '" + name + "'." + NearMissHint(name, DefaultNames());
    }
    if (value.empty()) {
        return "The setting " + name + " has no value.";
    }
    const auto& words = known->words;
    if (words.empty() || std::ranges::find(words, value) != words.end()) {
        return {};
    }
    return "The setting " + name + " is one of: " + Joined(words) + '.';
}

struct ConfigLine {
    // Empty for a blank line and a remark.
    std::string name;
    std::string value;
    bool isSetting = false;
};

ConfigLine ParsedLine(const std::string& line) {
    const std::string_view text = TrimBlanks(line);
    if (text.empty() || text.front() == '#') {
        return {};
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return {std::string(text), "", true};
    }
    return {std::string(TrimBlanks(text.substr(0, equals))),
            std::string(TrimBlanks(text.substr(equals + 1))), true};
}

// Throws Error.
std::vector<std::string> LinesOf(const std::string& file) {
    std::vector<std::string> lines;
    std::error_code ignored;
    if (file.empty() || !std::filesystem::exists(PathOf(file), ignored)) {
        return lines;
    }
    std::ifstream stream(PathOf(file), std::ios::binary);
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (lines.empty() && line.starts_with(Utf8Mark)) {
            line.erase(0, Utf8Mark.size());
        }
        lines.push_back(line);
    }
    if (!stream.eof()) {
        throw Error(ErrorNumber::PathFileAccess, "Can't read the configuration file " + file + '.');
    }
    return lines;
}

// The file that a link leads to. Those who keep such files elsewhere put a link into their place.
std::string FileBehind(const std::string& file) {
    std::error_code failure;
    if (!std::filesystem::is_symlink(PathOf(file), failure)) {
        return file;
    }
    const auto target = std::filesystem::weakly_canonical(PathOf(file), failure).generic_u8string();
    return failure ? file : std::string(target.begin(), target.end());
}

void WriteLines(const std::string& file, const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    const std::string target = FileBehind(file);
    std::error_code failure;
    const auto before = std::filesystem::status(PathOf(target), failure);
    WriteText(target, text);
    // Who may read it stays as it was.
    if (std::filesystem::exists(before)) {
        std::filesystem::permissions(PathOf(target), before.permissions(), failure);
    }
}

// A library that is named by its place in this folder is meant in every folder.
std::string LastingValue(const std::string& name, const std::string& value) {
    const std::filesystem::path path = PathOf(value);
    std::error_code failure;
    if (name != DefaultName::Visa || !path.has_parent_path() || path.is_absolute()) {
        return value;
    }
    const auto whole = std::filesystem::absolute(path, failure).lexically_normal().u8string();
    return failure ? value : std::string(whole.begin(), whole.end());
}

std::size_t RemoveSetting(std::vector<std::string>& lines, const std::string& name) {
    return std::erase_if(lines,
                         [&](const std::string& line) { return ParsedLine(line).name == name; });
}

void RequireKnown(const std::string& name, const std::string& value) {
    if (const std::string fault = SettingFault(name, value); !fault.empty()) {
        throw UsageError(fault);
    }
}

}  // namespace

std::vector<std::string> DefaultNames() {
    std::vector<std::string> names;
    for (const KnownDefault& each : KnownDefaults()) {
        names.emplace_back(each.name);
    }
    return names;
}

Defaults::Defaults(const Environment& environment) {
    for (const KnownDefault& known : KnownDefaults()) {
        m_values.push_back({known.name, std::string(known.value), "default"});
    }
    ReadFile(environment.configFile);
    if (environment.address) {
        Take(DefaultName::Address, *environment.address, "KRV_ADDRESS");
    }
    if (environment.visaLibrary) {
        Take(DefaultName::Visa, *environment.visaLibrary, "KRV_VISA");
    }
    if (environment.hasNoColor) {
        Take(DefaultName::Color, "never", "NO_COLOR");
    }
}

void Defaults::ReadFile(const std::string& file) {
    std::size_t number = 0;
    for (const std::string& line : LinesOf(file)) {
        ++number;
        const ConfigLine setting = ParsedLine(line);
        if (!setting.isSetting) {
            continue;
        }
        if (const std::string fault = SettingFault(setting.name, setting.value); !fault.empty()) {
            throw Error(ErrorNumber::InvalidPropertyValue,
                        "Line " + std::to_string(number) + " of " + file + ": " + fault);
        }
        Take(setting.name, setting.value, file);
    }
}

void Defaults::Take(std::string_view name, const std::string& value, const std::string& origin) {
    const auto known = std::ranges::find(m_values, name, &DefaultValue::name);
    known->value = value;
    known->origin = origin;
}

const std::string& Defaults::Value(std::string_view name) const {
    return std::ranges::find(m_values, name, &DefaultValue::name)->value;
}

void SetDefault(const Environment& environment, const std::string& name, const std::string& given) {
    const std::string value(TrimBlanks(given));
    RequireKnown(name, value);
    const std::string& file = environment.configFile;
    if (file.empty()) {
        throw Error(ErrorNumber::PathFileAccess,
                    "There is no home folder for a configuration file. Name a file in the "
                    "environment, as KRV_CONFIG.");
    }
    std::vector<std::string> lines = LinesOf(file);
    RemoveSetting(lines, name);
    lines.push_back(name + " = " + LastingValue(name, value));
    const auto folder = PathOf(file).parent_path().generic_u8string();
    if (!folder.empty()) {
        MakeFolder({folder.begin(), folder.end()});
    }
    WriteLines(file, lines);
}

bool UnsetDefault(const Environment& environment, const std::string& name) {
    std::vector<std::string> lines = LinesOf(environment.configFile);
    if (RemoveSetting(lines, name) > 0) {
        WriteLines(environment.configFile, lines);
        return true;
    }
    // Only what could be set is missed: what the file sets wrongly can be taken out.
    const auto& all = KnownDefaults();
    if (std::ranges::find(all, name, &KnownDefault::name) == all.end()) {
        RequireKnown(name, "");
    }
    return false;
}

}  // namespace krv::cli
