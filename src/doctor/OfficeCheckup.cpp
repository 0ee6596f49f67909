#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "doctor/Checkup.h"
#include "doctor/Components.h"

namespace krv::doctor {
namespace {

// Bits and values of LoadBehavior.
constexpr std::uint32_t Connected = 1;
constexpr std::uint32_t LoadAtStartup = 3;
constexpr std::uint32_t UnloadedAtStartup = 2;

struct Application {
    const char* name;
    const char* program;
};
constexpr std::array Applications{Application{"Excel", "excel.exe"},
                                  Application{"Word", "winword.exe"}};
// Of Office, as its keys have them.
constexpr std::array Versions{"16.0", "15.0", "14.0", "12.0"};

constexpr const char* Office = "Software\\Microsoft\\Office\\";
constexpr const char* Policies = "Software\\Policies\\Microsoft\\Office\\";

std::string ItemOf(const Application& application) {
    return application.name + std::string(" add-in");
}

// Nothing where it isn't installed.
std::optional<std::string> ProgramOf(const InstalledSystem& system,
                                     const Application& application) {
    const std::string path = std::string("Microsoft\\Windows\\CurrentVersion\\App Paths\\");
    for (const auto& [scope, root] :
         {std::pair{Scope::User, "Software\\"}, std::pair{Scope::Machine, "Software\\"},
          std::pair{Scope::Machine, "Software\\Wow6432Node\\"}}) {
        if (auto file = system.Text({scope, root + path + application.program}, "")) {
            std::erase(*file, '"');
            return file;
        }
    }
    return std::nullopt;
}

Finding ExamineApplication(const InstalledSystem& system, const Application& application) {
    Finding finding{.item = application.name};
    const auto file = ProgramOf(system, application);
    const auto facts = file ? system.Facts(*file) : std::nullopt;
    if (!facts) {
        finding.verdict = Verdict::Absent;
        finding.state = "not installed";
        return finding;
    }
    finding.wordSize = facts->bits;
    finding.version = facts->version;
    finding.file = *file;
    finding.state = "installed";
    return finding;
}

RegistryKey AddInKey(Scope scope, const Application& application, bool isApart) {
    return {scope, std::string("Software\\") + (isApart ? "Wow6432Node\\" : "") +
                       "Microsoft\\Office\\" + application.name + "\\Addins\\" + AddInProgId};
}

struct AddInEntry {
    Scope scope;
    std::uint32_t loadBehavior;
};

// What the user has counts more than what the machine has, which keeps a 32-bit application's keys
// apart.
std::optional<AddInEntry> FindEntry(const InstalledSystem& system, const Application& application,
                                    int wordSize) {
    const bool isApart = wordSize != 0 && wordSize != system.WordSizes().front();
    for (const auto& key : {AddInKey(Scope::User, application, false),
                            AddInKey(Scope::Machine, application, isApart)}) {
        if (const auto behavior = system.Number(key, "LoadBehavior")) {
            return AddInEntry{key.scope, *behavior};
        }
    }
    return std::nullopt;
}

void OfferToSwitchOn(Finding& finding, const Application& application) {
    finding.remedy = std::string("Close ") + application.name + ", then 'krv doctor --repair'.";
    finding.repair = [&application](InstalledSystem& system) {
        // The user's own key counts for both word sizes, and needs no administrator.
        system.SetNumber(AddInKey(Scope::User, application, false), "LoadBehavior", LoadAtStartup);
    };
}

Finding ExamineEntry(const InstalledSystem& system, const Application& application, int wordSize,
                     bool isInstalled) {
    Finding finding{.item = ItemOf(application), .wordSize = wordSize};
    const auto entry = FindEntry(system, application, wordSize);
    if (!entry) {
        finding.verdict = isInstalled ? Verdict::Fault : Verdict::Absent;
        finding.state = std::string("not known to ") + application.name;
        finding.remedy = isInstalled ? "Run the setup program." : "";
        return finding;
    }
    finding.owner = OwnerOf(entry->scope);
    const std::string value = " (LoadBehavior " + std::to_string(entry->loadBehavior) + ')';
    if ((entry->loadBehavior & Connected) != 0 || entry->loadBehavior > LoadAtStartup) {
        finding.state = "switched on" + value;
        return finding;
    }
    finding.verdict = Verdict::Fault;
    finding.state =
        (entry->loadBehavior == UnloadedAtStartup ? "unloaded after a failure" : "switched off") +
        value;
    OfferToSwitchOn(finding, application);
    return finding;
}

// The value's bytes hold the text as UTF-16, low byte first, whatever stands around it.
bool Holds(const std::vector<std::byte>& bytes, std::string_view text) {
    const auto isSame = [&](std::size_t at) {
        for (std::size_t index = 0; index < text.size(); ++index) {
            const int low = std::to_integer<int>(bytes[at + 2 * index]);
            if (bytes[at + 2 * index + 1] != std::byte{0} ||
                std::tolower(low) != std::tolower(static_cast<unsigned char>(text[index]))) {
                return false;
            }
        }
        return true;
    };
    for (std::size_t at = 0; at + 2 * text.size() <= bytes.size(); ++at) {
        if (isSame(at)) {
            return true;
        }
    }
    return false;
}

bool NamesAddIn(const RegistryValue& value) {
    return value.name == AddInProgId || Holds(value.bytes, AddInProgId) ||
           Holds(value.bytes, "KRVAddIn.dll");
}

Finding DisabledItem(const Application& application, const RegistryKey& key,
                     const std::string& name) {
    const std::string remedy =
        std::string("Close ") + application.name + ", then 'krv doctor --repair'.";
    return {.item = ItemOf(application),
            .verdict = Verdict::Fault,
            .owner = OwnerOf(key.scope),
            .state = std::string("disabled by ") + application.name +
                     " after a failure or a slow start, in " + key.path,
            .remedy = remedy,
            .repair = [key, name](InstalledSystem& system) { system.DeleteValue(key, name); }};
}

void AddDisabledItems(std::vector<Finding>& findings, const InstalledSystem& system,
                      const Application& application, const std::string& version) {
    for (const char* list : {"DisabledItems", "CrashingAddinList"}) {
        const RegistryKey key{Scope::User,
                              Office + version + '\\' + application.name + "\\Resiliency\\" + list};
        for (const RegistryValue& value : system.Values(key)) {
            if (NamesAddIn(value)) {
                findings.push_back(DisabledItem(application, key, value.name));
            }
        }
    }
}

Finding KeptOut(const Application& application, const RegistryKey& key, const char* setting,
                bool isPolicy) {
    return {.item = ItemOf(application),
            .verdict = Verdict::Fault,
            .owner = OwnerOf(key.scope),
            .state = std::string("kept out by the setting ") + setting + " in " + key.path,
            .remedy = isPolicy ? "It is a policy of your network: ask its administrator."
                               : "Change it in File > Options > Trust Center > Trust Center "
                                 "Settings > Add-ins."};
}

// What an administrator or the user's Trust Center says of all add-ins.
void AddSettings(std::vector<Finding>& findings, const InstalledSystem& system,
                 const Application& application, const std::string& version) {
    const std::string path = version + '\\' + application.name + "\\Security";
    const std::string policies = std::string(Policies) + path;
    for (const auto& key :
         {RegistryKey{Scope::User, policies}, RegistryKey{Scope::Machine, policies},
          RegistryKey{Scope::User, Office + path}}) {
        for (const char* setting : {"RequireAddinSig", "DisableAllAddins"}) {
            if (system.Number(key, setting).value_or(0) != 0) {
                findings.push_back(KeptOut(application, key, setting, key.path == policies));
            }
        }
    }
}

}  // namespace

std::vector<Finding> ExamineOffice(const InstalledSystem& system) {
    std::vector<Finding> findings;
    if (system.WordSizes().empty()) {
        return findings;
    }
    for (const Application& application : Applications) {
        const Finding installed = ExamineApplication(system, application);
        findings.push_back(installed);
        findings.push_back(ExamineEntry(system, application, installed.wordSize,
                                        installed.verdict == Verdict::Good));
        for (const char* version : Versions) {
            AddDisabledItems(findings, system, application, version);
            AddSettings(findings, system, application, version);
        }
    }
    return findings;
}

}  // namespace krv::doctor
