// The commands, each from its arguments to an exit code. Each throws UsageError for arguments that
// can't be used, and Error for a failure that no message box has shown.
#pragma once

#include "cli/Arguments.h"
#include "cli/Console.h"

namespace krv::cli {

// Serves until interrupted.
[[nodiscard]] int RunSim(const SimArguments& arguments, Console& console);
[[nodiscard]] int RunList(const ListArguments& arguments, Console& console);
[[nodiscard]] int RunIdentify(const IdentifyArguments& arguments, Console& console);
[[nodiscard]] int RunStatus(const StatusArguments& arguments, Console& console);
[[nodiscard]] int RunFiles(const FilesArguments& arguments, Console& console);
[[nodiscard]] int RunPlay(const PlayArguments& arguments, Console& console);
[[nodiscard]] int RunSet(const SetArguments& arguments, Console& console);
[[nodiscard]] int RunSend(const SendArguments& arguments, Console& console);
[[nodiscard]] int RunCapture(const StateArguments& arguments, Console& console);
[[nodiscard]] int RunRestore(const StateArguments& arguments, Console& console);
// Failed where it finds a fault.
[[nodiscard]] int RunDoctor(const DoctorArguments& arguments, Console& console);
[[nodiscard]] int RunConfig(const ConfigArguments& arguments, Console& console);
[[nodiscard]] int RunOpenGuide(Console& console);
[[nodiscard]] int RunFormats(const FormatsArguments& arguments, Console& console);
[[nodiscard]] int RunImport(const ImportFileArguments& arguments, Console& console);
[[nodiscard]] int RunInfo(const InfoArguments& arguments, Console& console);
[[nodiscard]] int RunPlot(const PlotArguments& arguments, Console& console);
[[nodiscard]] int RunImage(const ImageArguments& arguments, Console& console);

}  // namespace krv::cli
