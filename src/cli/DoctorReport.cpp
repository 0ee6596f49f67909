#include "cli/DoctorReport.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iomanip>
#include <ostream>
#include <sstream>

#include "doctor/Discretion.h"
#include "doctor/StoredZip.h"

namespace krv::cli {
namespace {

using doctor::Finding;
using doctor::Verdict;

using Row = std::array<std::string, 4>;

std::string WordFor(Verdict verdict) {
    switch (verdict) {
        case Verdict::Good:
            return "good";
        case Verdict::Absent:
            return "absent";
        default:
            return "fault";
    }
}

Row RowOf(const Finding& finding) {
    const std::string verdict = finding.verdict == Verdict::Good     ? "ok"
                                : finding.verdict == Verdict::Absent ? "-"
                                                                     : "FAULT";
    return {verdict, finding.item,
            finding.wordSize == 0 ? "" : std::to_string(finding.wordSize) + " bit", finding.owner};
}

void PrintRow(const Row& row, const std::array<std::size_t, 4>& widths, std::ostream& out) {
    for (std::size_t column = 0; column < row.size(); ++column) {
        if (widths[column] > 0) {
            out << std::left << std::setw(static_cast<int>(widths[column]) + 2) << row[column];
        }
    }
}

void PrintDetails(const Finding& finding, std::ostream& out) {
    out << finding.state;
    if (!finding.version.empty()) {
        out << ", version " << finding.version;
    }
    if (!finding.file.empty()) {
        out << ", " << finding.file;
    }
    out << '\n';
    if (!finding.remedy.empty()) {
        out << "       > " << finding.remedy << '\n';
    }
}

OutputJson FindingJson(const Finding& finding) {
    return {
        {"item", finding.item},
        {"verdict", WordFor(finding.verdict)},
        {"wordSize", finding.wordSize == 0 ? OutputJson(nullptr) : OutputJson(finding.wordSize)},
        {"owner", TextOrNull(finding.owner)},
        {"state", finding.state},
        {"version", TextOrNull(finding.version)},
        {"file", TextOrNull(finding.file)},
        {"remedy", TextOrNull(finding.remedy)},
        {"canRepair", static_cast<bool>(finding.repair)}};
}

// Without what a private one leaves out.
DoctorReport Discreet(DoctorReport report) {
    const auto clean = [numbers = report.serialNumbers](std::string& text) {
        text = doctor::WithoutPrivateParts(text, numbers);
    };
    for (Finding& finding : report.findings) {
        for (std::string* text : {&finding.state, &finding.file, &finding.remedy}) {
            clean(*text);
        }
    }
    std::ranges::for_each(report.repairs, clean);
    return report;
}

}  // namespace

int DoctorReport::Faults() const {
    return static_cast<int>(std::ranges::count(findings, Verdict::Fault, &Finding::verdict));
}

bool DoctorReport::CanRepair() const {
    return std::ranges::any_of(findings,
                               [](const Finding& finding) { return finding.repair != nullptr; });
}

void PrintReport(const DoctorReport& report, std::ostream& out) {
    std::array<std::size_t, 4> widths{};
    for (const Finding& finding : report.findings) {
        const Row row = RowOf(finding);
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    out << report.systemName << '\n';
    for (const Finding& finding : report.findings) {
        PrintRow(RowOf(finding), widths, out);
        PrintDetails(finding, out);
    }
    for (const std::string& repair : report.repairs) {
        out << repair << '\n';
    }
    const int faults = report.Faults();
    out << (faults == 0   ? "No fault found."
            : faults == 1 ? "1 fault found."
                          : std::to_string(faults) + " faults found.")
        << '\n';
}

OutputJson ReportJson(const DoctorReport& report) {
    OutputJson findings = OutputJson::array();
    for (const Finding& finding : report.findings) {
        findings.push_back(FindingJson(finding));
    }
    return {{"system", report.systemName},
            {"findings", findings},
            {"repairs", report.repairs},
            {"faults", report.Faults()}};
}

std::string BundleOf(const DoctorReport& report, const std::vector<BundledFile>& files,
                     bool isPrivate) {
    const DoctorReport& told = isPrivate ? Discreet(report) : report;
    std::ostringstream text;
    PrintReport(told, text);
    doctor::StoredZip archive;
    archive.Add("doctor.txt", text.str());
    archive.Add("doctor.json", AsText(ReportJson(told)));
    for (const BundledFile& file : files) {
        archive.Add(file.name, isPrivate
                                   ? doctor::WithoutPrivateParts(file.content, report.serialNumbers)
                                   : file.content);
    }
    return archive.Bytes();
}

}  // namespace krv::cli
