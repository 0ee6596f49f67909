#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/Defaults.h"
#include "cli/DoctorReport.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/InstrumentLink.h"
#include "common/ErrorTrap.h"
#include "common/WholeFile.h"
#include "doctor/Checkup.h"
#include "formats/Formats.h"
#include "suite/transport/visa/VisaLibrary.h"

namespace krv::cli {
namespace {

using doctor::Finding;
using doctor::Verdict;

Finding ExamineProgram(const doctor::InstalledSystem& system) {
    return {.item = "krv",
            .wordSize = system.OwnWordSize(),
            .state = "runs",
            .version = KRV_VERSION,
            .file = system.ProgramFile()};
}

bool IsFile(const std::string& file) {
    std::error_code failure;
    return std::filesystem::is_regular_file(PathOf(file), failure);
}

Finding ExamineConfiguration(const Environment& environment, const std::optional<Error>& fault) {
    Finding finding{.item = "configuration", .file = environment.configFile};
    if (fault) {
        finding.verdict = Verdict::Fault;
        finding.state = fault->Description();
        finding.remedy = "Change the file, or delete it.";
    } else if (IsFile(environment.configFile)) {
        finding.state = "read";
    } else {
        finding.verdict = Verdict::Absent;
        finding.state = "none";
    }
    return finding;
}

Finding ExamineVisa(const std::string& name) {
    Finding finding{.item = "VISA library", .state = "loads", .file = name};
    const suite::VisaLibrary library = suite::LoadVisa(name);
    if (library.isAbsent) {
        finding.verdict = Verdict::Absent;
        finding.state = "not installed; only GPIB, USB and the like need it";
    } else if (!library.fault.empty()) {
        finding.verdict = Verdict::Fault;
        finding.state = library.fault;
    }
    return finding;
}

void AddFormats(std::vector<Finding>& findings) {
    for (const formats::Format& format : formats::AllFormats()) {
        if (format.lacks != nullptr) {
            findings.push_back(
                {.item = std::string(format.name),
                 .verdict = Verdict::Absent,
                 .state = std::string("not read by this build: it lacks ") + format.lacks});
        }
    }
}

// Asks the instrument who it is.
void Interview(const ConnectionArguments& connection, DoctorReport& report, Finding& finding) {
    InstrumentLink link(connection);
    const auto instrument = link.Server()->Instrument();
    report.serialNumbers.push_back(instrument->SerialNumber());
    finding.state += ": " + instrument->Model() + " answers, serial number " +
                     instrument->SerialNumber() + ", firmware " + instrument->FirmwareRevision();
    link.Finish();
}

void ExamineAddress(const ConnectionArguments& connection, DoctorReport& report) {
    Finding finding{.item = "address", .state = connection.address.value_or("")};
    if (finding.state.empty()) {
        finding.verdict = Verdict::Absent;
        finding.state = "none is set: --address names one";
    } else if (const auto failure = FailureOf([&] { Interview(connection, report, finding); })) {
        finding.verdict = Verdict::Fault;
        finding.state += ": " + failure->Description();
        finding.remedy = "'krv list' shows the instruments that answer.";
    }
    report.findings.push_back(std::move(finding));
}

void Append(std::vector<Finding>& findings, std::vector<Finding> more) {
    std::ranges::move(more, std::back_inserter(findings));
}

DoctorReport Examine(const doctor::InstalledSystem& system, const Environment& environment,
                     ConnectionArguments connection) {
    DoctorReport report{system.Name(), {}, {}, {}};
    std::optional<Defaults> defaults;
    const auto fault = FailureOf([&] { defaults.emplace(environment); });
    if (defaults) {
        connection.address = connection.address.value_or(defaults->Value(DefaultName::Address));
        connection.visaLibrary =
            connection.visaLibrary.value_or(defaults->Value(DefaultName::Visa));
    }
    auto& findings = report.findings;
    findings.push_back(ExamineProgram(system));
    findings.push_back(ExamineConfiguration(environment, fault));
    Append(findings, doctor::ExamineLibraries(system));
    Append(findings, doctor::ExamineOffice(system));
    AddFormats(findings);
    findings.push_back(ExamineVisa(connection.visaLibrary.value_or("")));
    ExamineAddress(connection, report);
    return report;
}

// What was done, a sentence for each fault that can be mended.
std::vector<std::string> Repair(const std::vector<Finding>& findings,
                                doctor::InstalledSystem& system) {
    std::vector<std::string> done;
    for (const Finding& finding : findings) {
        if (!finding.repair) {
            continue;
        }
        const auto failure = FailureOf([&] { finding.repair(system); });
        done.push_back(failure
                           ? "Not repaired: " + finding.item + ": " + failure->Description()
                           : "Repaired: " + finding.item + ", which was " + finding.state + '.');
    }
    return done;
}

void AddFile(std::vector<BundledFile>& files, const std::string& name, const std::string& file) {
    if (IsFile(file)) {
        std::ifstream content(PathOf(file), std::ios::binary);
        files.push_back({name, {std::istreambuf_iterator<char>(content), {}}});
    }
}

void WriteBundle(const DoctorArguments& arguments, const Environment& environment,
                 const doctor::InstalledSystem& system, const DoctorReport& report) {
    std::vector<BundledFile> files;
    AddFile(files, "config.txt", environment.configFile);
    AddFile(files, "add-in.txt", system.AddInLog());
    if (arguments.connection.logFile) {
        AddFile(files, "conversation.txt", *arguments.connection.logFile);
    }
    WriteText(*arguments.bundleFile, BundleOf(report, files, arguments.isPrivate));
}

void RequireSeparateFiles(const DoctorArguments& arguments) {
    if (arguments.bundleFile && arguments.connection.logFile) {
        RequireOtherFiles({"--bundle", *arguments.bundleFile},
                          std::vector<NamedFile>{{"--log", *arguments.connection.logFile}});
    }
}

}  // namespace

int RunDoctor(const DoctorArguments& arguments, Console& console) {
    RequireSeparateFiles(arguments);
    const EndOnInterruption end(console.interruptions);
    const auto system = doctor::ThisSystem();
    DoctorReport report = Examine(*system, console.environment, arguments.connection);
    if (arguments.repair && report.CanRepair()) {
        auto repairs = Repair(report.findings, *system);
        report = Examine(*system, console.environment, arguments.connection);
        report.repairs = std::move(repairs);
    }
    if (arguments.bundleFile) {
        WriteBundle(arguments, console.environment, *system, report);
    }
    if (arguments.json) {
        PrintJson(ReportJson(report), console.out);
    } else {
        PrintReport(report, console.out);
    }
    return report.Faults() == 0 ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace krv::cli
