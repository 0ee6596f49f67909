#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>

#include "cli/Commands.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/JsonOutput.h"
#include "common/Error.h"
#include "common/FolderLock.h"
#include "common/Text.h"
#include "common/WholeFile.h"
#include "simulator/device/Generator.h"
#include "simulator/server/GeneratorServer.h"
#include "suite/discovery/Announcement.h"

namespace krv::cli {
namespace {

std::vector<std::string> SplitAtCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::string part;
    for (const char character : text + ',') {
        if (character != ',') {
            part += character;
        } else if (!part.empty()) {
            parts.push_back(std::exchange(part, {}));
        }
    }
    return parts;
}

simulator::GeneratorSettings SettingsOf(const SimArguments& arguments) {
    simulator::GeneratorSettings settings;
    settings.model = arguments.model.value_or(settings.model);
    settings.firmware = arguments.firmware.value_or(settings.firmware);
    settings.serialNumber = arguments.serialNumber;
    settings.memoryPoints = arguments.memoryPoints.value_or(settings.memoryPoints);
    settings.faults = arguments.faults;
    if (arguments.options) {
        settings.options = SplitAtCommas(*arguments.options);
    }
    if (arguments.transcriptFile) {
        settings.transcriptFile = PathOf(*arguments.transcriptFile);
    }
    if (arguments.storeFolder) {
        MakeFolder(*arguments.storeFolder);
        settings.storeFolder = PathOf(*arguments.storeFolder);
    }
    return settings;
}

// Two generators would replace each other's waveforms.
std::unique_ptr<FolderLock> LockStore(const simulator::GeneratorSettings& settings) {
    if (!settings.storeFolder) {
        return nullptr;
    }
    auto lock = std::make_unique<FolderLock>(*settings.storeFolder);
    if (!lock->IsHeld()) {
        throw Error(ErrorNumber::PathFileAccess,
                    "The folder for waveforms is in use by another simulated generator.");
    }
    return lock;
}

// Clients choose the names of waveforms, and with them those of the files in the store.
void RequireNoFileOfStore(const std::string& transcript, const std::string& store) {
    const auto folder = std::filesystem::absolute(PathOf(transcript)).parent_path().u8string();
    if (UpperCase(transcript).ends_with(".INT16") &&
        AreSameFile(std::string(folder.begin(), folder.end()), store)) {
        throw UsageError("--transcript names " + transcript +
                         ", which may be the file of a waveform in --store. Name another place.");
    }
}

// While it is in scope Ctrl-C stops the server.
class StopOnInterruption {
 public:
    StopOnInterruption(Interruptions& interruptions, simulator::GeneratorServer& server)
        : m_interruptions(interruptions) {
        m_interruptions.Watch(
            [](void* context) noexcept {
                static_cast<simulator::GeneratorServer*>(context)->Stop();
            },
            &server);
    }
    ~StopOnInterruption() { m_interruptions.StopWatching(); }
    StopOnInterruption(const StopOnInterruption&) = delete;
    StopOnInterruption& operator=(const StopOnInterruption&) = delete;

 private:
    Interruptions& m_interruptions;
};

void ServeVxi11(simulator::GeneratorServer& server, std::uint16_t mapperPort) {
    try {
        server.ServeVxi11(mapperPort);
    } catch (const Error& failure) {
        throw Error(failure.Number(),
                    failure.Description() +
                        " The port mapper of VXI-11 needs it. Run krv with the rights of an "
                        "administrator, end the program that has the port, or name another port "
                        "with --portmap.",
                    failure.Source());
    }
}

// Programs wait for the first line, or for the object.
void TellOfStart(const SimArguments& arguments, const simulator::Generator& generator,
                 const simulator::GeneratorServer& server, Console& console) {
    const auto at = [](std::uint16_t port) { return "127.0.0.1:" + std::to_string(port); };
    CommandOutput output(console.out, arguments.json);
    output.Text() << "listening on " << at(server.Port()) << '\n';
    output["address"] = at(server.Port());
    output["model"] = generator.Settings().model;
    output["serialNumber"] = TextOrNull(generator.Settings().serialNumber.value_or(""));
    if (arguments.vxi11) {
        output.Text() << "VXI-11 on " << at(server.Vxi11Port()) << ", port mapper on "
                      << at(server.MapperPort()) << '\n';
        output["vxi11"] = at(server.Vxi11Port());
        output["portMapper"] = at(server.MapperPort());
    }
    output.Finish();
    console.out.flush();
}

}  // namespace

int RunSim(const SimArguments& arguments, Console& console) {
    try {
        if (arguments.transcriptFile && arguments.storeFolder) {
            RequireNoFileOfStore(*arguments.transcriptFile, *arguments.storeFolder);
        }
        const simulator::GeneratorSettings settings = SettingsOf(arguments);
        const auto lock = LockStore(settings);
        const auto generator = std::make_shared<simulator::Generator>(settings);
        simulator::GeneratorServer server(generator, arguments.port);
        if (!settings.serialNumber) {
            generator->SetSerialNumber(simulator::SerialNumberAt(server.Port()));
        }
        if (arguments.vxi11) {
            ServeVxi11(server, arguments.mapperPort);
        }
        if (arguments.announce) {
            server.Announce();
        }
        const suite::Announcement announcement(server.Port());
        const StopOnInterruption stop(console.interruptions, server);
        TellOfStart(arguments, *generator, server, console);
        server.Run();
        const auto& transcript = generator->Transcript();
        if (transcript != nullptr && !transcript->IsComplete()) {
            throw Error(ErrorNumber::PathFileAccess, "Can't write " + *arguments.transcriptFile +
                                                         ": The device is full or has failed.");
        }
    } catch (const std::invalid_argument& unknownFault) {
        throw UsageError(unknownFault.what());
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
