#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "doctor/Checkup.h"
#include "doctor/Components.h"

namespace krv::doctor {
namespace {

constexpr const char* RunSetup = "Run the setup program again: it repairs what is installed.";

// A library as it is registered under one name.
struct Registration {
    Scope scope;
    std::string file;
};

// A 64-bit system keeps the classes of 32-bit programs apart.
std::string ClassPath(const InstalledSystem& system, int wordSize, const std::string& id) {
    const bool isApart = wordSize != system.WordSizes().front();
    return std::string("Software\\Classes\\") + (isApart ? "Wow6432Node\\" : "") + "CLSID\\" + id +
           "\\InprocServer32";
}

// What the user has counts more than what the machine has.
std::optional<Registration> FindRegistration(const InstalledSystem& system, int wordSize,
                                             const std::string& progId) {
    for (const Scope ofName : {Scope::User, Scope::Machine}) {
        const auto id = system.Text({ofName, "Software\\Classes\\" + progId + "\\CLSID"}, "");
        if (!id) {
            continue;
        }
        for (const Scope scope : {Scope::User, Scope::Machine}) {
            if (auto file = system.Text({scope, ClassPath(system, wordSize, *id)}, "")) {
                return Registration{scope, std::move(*file)};
            }
        }
        return std::nullopt;
    }
    return std::nullopt;
}

std::string FolderOf(const std::string& file) {
    const std::size_t end = file.find_last_of("\\/");
    return end == std::string::npos ? std::string() : file.substr(0, end + 1);
}

// Empty where none is beside the program.
std::string InstalledLibrary(const InstalledSystem& system, const Component& component,
                             int wordSize) {
    const std::string folder = FolderOf(system.ProgramFile());
    for (const std::string& file :
         {folder + LibraryFolder(wordSize) + '\\' + component.file, folder + component.file}) {
        if (const auto facts = system.Facts(file); facts && facts->bits == wordSize) {
            return file;
        }
    }
    return {};
}

void Blame(Finding& finding, const std::string& state, const std::string& remedy) {
    finding.verdict = Verdict::Fault;
    finding.state = state;
    finding.remedy = remedy;
}

// With the library that is installed beside the program.
void OfferRegistration(Finding& finding, const InstalledSystem& system, const Component& component,
                       Scope scope) {
    const std::string file = InstalledLibrary(system, component, finding.wordSize);
    if (file.empty()) {
        return;
    }
    finding.remedy = "'krv doctor --repair' registers " + file + '.';
    finding.repair = [file, wordSize = finding.wordSize, scope](InstalledSystem& repaired) {
        repaired.Register(file, wordSize, scope);
    };
}

void JudgeFile(Finding& finding, const InstalledSystem& system, const Component& component,
               Scope scope) {
    const auto facts = system.Facts(finding.file);
    if (!facts) {
        Blame(finding, "registered, but its file is gone", RunSetup);
        OfferRegistration(finding, system, component, scope);
        return;
    }
    finding.version = facts->version;
    const std::string wordSize = std::to_string(finding.wordSize);
    if (facts->bits != finding.wordSize) {
        Blame(finding,
              facts->bits == 0 ? "registered, but its file is no library"
                               : "a " + std::to_string(facts->bits) +
                                     "-bit library, registered for " + wordSize + "-bit programs",
              RunSetup);
        OfferRegistration(finding, system, component, scope);
    } else if (finding.wordSize != system.OwnWordSize()) {
        finding.state = "registered";
    } else if (const std::string fault = system.LoadFault(finding.file); !fault.empty()) {
        Blame(finding, "registered, but can't be loaded: " + fault, RunSetup);
    } else {
        finding.state = "registered, loads";
    }
}

Finding NotRegistered(const InstalledSystem& system, const Component& component, int wordSize) {
    Finding finding{.item = component.title,
                    .verdict = Verdict::Absent,
                    .wordSize = wordSize,
                    .state = "not registered"};
    OfferRegistration(finding, system, component, Scope::User);
    if (finding.repair) {
        finding.verdict = Verdict::Fault;
        finding.state = "installed, but not registered";
    }
    return finding;
}

// A library that has some of the component's classes lacks the others.
void AddMissing(std::vector<Finding>& findings, const std::vector<std::string>& missing,
                int wordSize) {
    for (const std::string& progId : missing) {
        Finding finding{.item = progId, .wordSize = wordSize};
        Blame(finding, "not registered, while others of its library are", RunSetup);
        findings.push_back(std::move(finding));
    }
}

std::vector<Finding> ExamineComponent(const InstalledSystem& system, const Component& component,
                                      int wordSize) {
    std::map<std::string, Scope> files;
    std::vector<std::string> missing;
    for (const char* progId : component.progIds) {
        if (const auto found = FindRegistration(system, wordSize, progId)) {
            files.emplace(found->file, found->scope);
        } else {
            missing.emplace_back(progId);
        }
    }
    std::vector<Finding> findings;
    if (files.empty()) {
        findings.push_back(NotRegistered(system, component, wordSize));
        return findings;
    }
    for (const auto& [file, scope] : files) {
        Finding& finding = findings.emplace_back(Finding{
            .item = component.title, .wordSize = wordSize, .owner = OwnerOf(scope), .file = file});
        JudgeFile(finding, system, component, scope);
    }
    AddMissing(findings, missing, wordSize);
    return findings;
}

}  // namespace

std::vector<Finding> ExamineLibraries(const InstalledSystem& system) {
    std::vector<Finding> findings;
    for (const Component& component : Components) {
        for (const int wordSize : system.WordSizes()) {
            std::ranges::move(ExamineComponent(system, component, wordSize),
                              std::back_inserter(findings));
        }
    }
    return findings;
}

}  // namespace krv::doctor
