// What krv doctor has found, for people, for programs, and for whoever looks into a fault.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/JsonOutput.h"
#include "doctor/Finding.h"

namespace krv::cli {

struct DoctorReport {
    // Of the operating system.
    std::string systemName;
    std::vector<doctor::Finding> findings;
    // What was done about faults, or why it couldn't be.
    std::vector<std::string> repairs;
    // Of the instruments that answered.
    std::vector<std::string> serialNumbers;

    [[nodiscard]] int Faults() const;
    // Something of it can be mended without the user.
    [[nodiscard]] bool CanRepair() const;
};

void PrintReport(const DoctorReport& report, std::ostream& out);
[[nodiscard]] OutputJson ReportJson(const DoctorReport& report);

// A file that goes into the bundle beside the report.
struct BundledFile {
    std::string name;
    std::string content;
};

// The archive's bytes. A private one tells neither folders nor serial numbers.
[[nodiscard]] std::string BundleOf(const DoctorReport& report,
                                   const std::vector<BundledFile>& files, bool isPrivate);

}  // namespace krv::cli
