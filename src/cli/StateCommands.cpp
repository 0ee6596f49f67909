#include <algorithm>
#include <ostream>

#include "cli/Commands.h"
#include "cli/Connection.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/ProgressLines.h"
#include "cli/TerminalMessageBoxes.h"
#include "common/BagContents.h"
#include "common/Error.h"
#include "common/files/StandardFiles.h"
#include "settings/SettingsSnapshot.h"

namespace krv::cli {
namespace {

// What is too large for a snapshot isn't read whole to find that out.
ByteArray ReadSnapshot(const std::string& file) {
    files::StandardFiles files;
    const std::uint64_t size = files.FileSize(file);
    const std::size_t most = BagLimit::Bytes + std::size_t{64};
    ByteArray snapshot;
    snapshot.bytes.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size, most)));
    snapshot.bytes.resize(files.OpenToRead(file)->Read(snapshot.bytes));
    return snapshot;
}

std::string NameOf(ports::ConnectedInstrument& instrument) {
    return instrument.Model() + ", serial number " + instrument.SerialNumber();
}

}  // namespace

int RunCapture(const StateArguments& arguments, Surroundings& surroundings) {
    const EndOnInterruption end(surroundings.interruptions);
    Connection connection(arguments.connection);
    const Value snapshot = settings::CaptureSettings(*connection.Server());
    WriteWhole(arguments.file, std::get<ByteArray>(snapshot).bytes);
    surroundings.out << "State of " << NameOf(*connection.Server()->Instrument()) << " written to "
                     << arguments.file << '\n';
    connection.Finish();
    return ExitCode::Done;
}

int RunRestore(const StateArguments& arguments, Surroundings& surroundings) {
    const EndOnInterruption end(surroundings.interruptions);
    const ByteArray snapshot = ReadSnapshot(arguments.file);
    Connection connection(arguments.connection);
    ProgressLines progress(nullptr, surroundings.progressWidth);
    TerminalMessageBoxes messageBoxes(surroundings, progress, false);
    settings::RestoreSettings(*connection.Server(), snapshot, messageBoxes);
    if (!messageBoxes.Shown().empty()) {
        return ExitCode::Failed;
    }
    surroundings.out << "State restored to " << NameOf(*connection.Server()->Instrument()) << '\n';
    connection.Finish();
    return ExitCode::Done;
}

}  // namespace krv::cli
