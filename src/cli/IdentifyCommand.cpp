#include <ostream>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/InstrumentLink.h"
#include "cli/JsonOutput.h"
#include "common/Joined.h"

namespace krv::cli {
namespace {

std::string ListOf(const std::vector<std::string>& names) {
    return names.empty() ? "none" : Joined(names);
}

}  // namespace

int RunIdentify(const IdentifyArguments& arguments, Console& console) {
    const EndOnInterruption end(console.interruptions);
    InstrumentLink link(arguments.connection);
    auto& server = *link.Server();
    const auto instrument = server.Instrument();
    const auto arb = server.Arb();
    const std::string selected = arb->ArbFileSelected() ? arb->SelectedArbFile() : "";
    if (arguments.json) {
        PrintJson({{"model", instrument->Model()},
                   {"firmwareRevision", instrument->FirmwareRevision()},
                   {"serialNumber", instrument->SerialNumber()},
                   {"options", server.InstalledOptions()},
                   {"selectedWaveform", TextOrNull(selected)}},
                  console.out);
        link.Finish();
        return ExitCode::Done;
    }
    console.out << "Model:             " << instrument->Model()
                << "\nFirmware revision: " << instrument->FirmwareRevision()
                << "\nSerial number:     " << instrument->SerialNumber()
                << "\nOptions:           " << ListOf(server.InstalledOptions())
                << "\nSelected waveform: " << (selected.empty() ? "none" : selected) << '\n';
    link.Finish();
    return ExitCode::Done;
}

}  // namespace krv::cli
