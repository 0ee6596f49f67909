#include <ostream>

#include "cli/Commands.h"
#include "cli/Connection.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/ProgressLines.h"
#include "cli/TerminalMessageBoxes.h"
#include "common/Error.h"
#include "image/ManualCapture.h"
#include "suite/picture/PictureFile.h"

namespace krv::cli {
namespace {

// Nothing happens at a terminal but what its user does.
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

int RunImage(const ImageArguments& arguments, Surroundings& surroundings) {
    RequirePictureName(arguments.file);
    const EndOnInterruption end(surroundings.interruptions);
    Connection connection(arguments.connection);
    ProgressLines progress(nullptr, surroundings.progressWidth);
    TerminalMessageBoxes messageBoxes(surroundings, progress, arguments.answerYes);
    NoEvents events;
    if (!image::PrepareScreenImage(*connection.Server(), events, messageBoxes)) {
        return ExitCode::Cancelled;
    }
    connection.Server()->SaveScreenImage(arguments.file, ports::ImageFormat::ByExtension);
    surroundings.out << "Screen image written to " << arguments.file << '\n';
    connection.Finish();
    return ExitCode::Done;
}

}  // namespace krv::cli
