// The commands, each from its arguments to an exit code. All throw UsageError for what can't be,
// and Error for what failed outside the dialog.
#pragma once

#include "cli/Arguments.h"
#include "cli/Surroundings.h"

namespace krv::cli {

// Serves until interrupted.
[[nodiscard]] int RunSim(const SimArguments& arguments, Surroundings& surroundings);
[[nodiscard]] int RunList(const ListArguments& arguments, Surroundings& surroundings);
[[nodiscard]] int RunIdentify(const IdentifyArguments& arguments, Surroundings& surroundings);
[[nodiscard]] int RunCapture(const StateArguments& arguments, Surroundings& surroundings);
[[nodiscard]] int RunRestore(const StateArguments& arguments, Surroundings& surroundings);
[[nodiscard]] int RunImage(const ImageArguments& arguments, Surroundings& surroundings);

}  // namespace krv::cli
