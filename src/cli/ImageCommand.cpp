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
#include "common/Error.h"
#include "image/ManualCapture.h"
#include "suite/picture/PictureFile.h"

namespace krv::cli {
namespace {

// A terminal has no events that could wait to be processed.
class NoEvents final : public ports::EventPump {
 public:
    void ProcessPendingEvents() override {}
};

void RequirePictureName(const std::string& file) {
    try {
        static_cast<void>(suite::picture::FormatOfFile(file));
    } catch (const Error& error) {
        throw UsageError(error.Description());
    }
}

}  // namespace

int RunImage(const ImageArguments& arguments, Console& console) {
    RequirePictureName(arguments.file);
    if (arguments.connection.logFile) {
        RequireOtherFiles({"--log", *arguments.connection.logFile},
                          std::array{NamedFile{"FILE", arguments.file}});
    }
    const EndOnInterruption end(console.interruptions);
    InstrumentLink link(arguments.connection);
    ProgressLines progress(nullptr, console.progressWidth);
    TerminalMessageBoxes messageBoxes(console, progress, arguments.answerYes);
    NoEvents events;
    switch (image::PrepareScreenImage(*link.Server(), events, messageBoxes)) {
        case image::Preparation::Done:
            break;
        case image::Preparation::Declined:
            return ExitCode::Cancelled;
        case image::Preparation::NotFound:
            return ExitCode::Failed;
    }
    link.Server()->SaveScreenImage(arguments.file, ports::ImageFormat::ByExtension);
    CommandOutput output(console.out, arguments.json);
    output.Text() << "Screen image written to " << arguments.file << '\n';
    output["file"] = arguments.file;
    link.Finish();
    output.Finish();
    return ExitCode::Done;
}

}  // namespace krv::cli
