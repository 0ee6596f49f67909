// A checkup: what of the product is installed and registered on a computer, and whether office
// applications would load it. Changes nothing.
#pragma once

#include <vector>

#include "doctor/Finding.h"
#include "doctor/InstalledSystem.h"

namespace krv::doctor {

// The libraries, by the names that programs create their objects by.
[[nodiscard]] std::vector<Finding> ExamineLibraries(const InstalledSystem& system);
// Excel and Word, and what keeps them from loading the add-in.
[[nodiscard]] std::vector<Finding> ExamineOffice(const InstalledSystem& system);

}  // namespace krv::doctor
