// What all office applications have alike: command bars and add-ins, over automation.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ports/office/OfficeHost.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

// Throws Error when there is no command bar of this name.
[[nodiscard]] std::shared_ptr<ports::CommandBar> CommandBarOf(const LateBound& application,
                                                              const std::string& name);
// In the application's order.
[[nodiscard]] std::vector<std::shared_ptr<ports::AddIn>> AddInsOf(const LateBound& application);

}  // namespace krv::windows
