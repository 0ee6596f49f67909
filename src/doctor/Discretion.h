// What a report that is shown to others leaves out on wish.
#pragma once

#include <string>
#include <vector>

namespace krv::doctor {

// The text with "..." for the folders of full paths, and "(left out)" for the serial numbers: those
// given, and the ones in names of USB resources. Names of files stay.
[[nodiscard]] std::string WithoutPrivateParts(const std::string& text,
                                              const std::vector<std::string>& serialNumbers);

}  // namespace krv::doctor
