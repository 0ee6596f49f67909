#include <algorithm>
#include <array>
#include <ostream>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/InstrumentLink.h"
#include "cli/JsonOutput.h"
#include "cli/ProgressLines.h"
#include "cli/TerminalMessageBoxes.h"
#include "common/BagContents.h"
#include "common/Error.h"
#include "common/files/StandardFiles.h"
#include "settings/SettingsSnapshot.h"

namespace krv::cli {
namespace {

// Reads no more than the largest snapshot, and a little to see that a file is too large.
ByteArray ReadSnapshot(const std::string& file) {
    files::StandardFiles files;
    const std::uint64_t size = files.FileSize(file);
    const std::size_t most = BagLimit::Bytes + std::size_t{64};
    ByteArray snapshot;
    snapshot.bytes.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size, most)));
    snapshot.bytes.resize(files.OpenToRead(file)->Read(snapshot.bytes));
    return snapshot;
}

void ProtectFile(const StateArguments& arguments) {
    if (arguments.connection.logFile) {
        RequireOtherFiles({"--log", *arguments.connection.logFile},
                          std::array{NamedFile{"FILE", arguments.file}});
    }
}

std::string NameOf(ports::ConnectedInstrument& instrument) {
    return instrument.Model() + ", serial number " + instrument.SerialNumber();
}

void Describe(ports::ConnectedInstrument& instrument, const std::string& file,
              CommandOutput& output) {
    output["model"] = instrument.Model();
    output["serialNumber"] = instrument.SerialNumber();
    output["file"] = file;
}

}  // namespace

int RunCapture(const StateArguments& arguments, Console& console) {
    ProtectFile(arguments);
    const EndOnInterruption end(console.interruptions);
    InstrumentLink link(arguments.connection);
    const Value snapshot = settings::CaptureSettings(*link.Server());
    WriteWhole(arguments.file, std::get<ByteArray>(snapshot).bytes);
    const auto instrument = link.Server()->Instrument();
    CommandOutput output(console.out, arguments.json);
    output.Text() << "State of " << NameOf(*instrument) << " written to " << arguments.file << '\n';
    Describe(*instrument, arguments.file, output);
    link.Finish();
    output.Finish();
    return ExitCode::Done;
}

int RunRestore(const StateArguments& arguments, Console& console) {
    ProtectFile(arguments);
    const EndOnInterruption end(console.interruptions);
    const ByteArray snapshot = ReadSnapshot(arguments.file);
    InstrumentLink link(arguments.connection);
    ProgressLines progress(nullptr, console.progressWidth);
    TerminalMessageBoxes messageBoxes(console, progress, false);
    settings::RestoreSettings(*link.Server(), snapshot, messageBoxes);
    if (!messageBoxes.Shown().empty()) {
        return ExitCode::Failed;
    }
    const auto instrument = link.Server()->Instrument();
    CommandOutput output(console.out, arguments.json);
    output.Text() << "State restored to " << NameOf(*instrument) << '\n';
    Describe(*instrument, arguments.file, output);
    link.Finish();
    output.Finish();
    return ExitCode::Done;
}

}  // namespace krv::cli
