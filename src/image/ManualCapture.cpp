#include "image/ManualCapture.h"

#include <string>

#include "common/Text.h"

namespace krv::image {
namespace {

constexpr const char* CaptureFile = "DISPLAY.BMP";
constexpr char OlderSeries = 'B';

std::string Instructions() {
    const std::string lineBreak(CrLf);
    return "Screen Capture Instructions:" + lineBreak + lineBreak +
           "1. Press the \"Local\" key on the KRV." + lineBreak +
           "2. Press the \"Trigger\" key on the KRV, which will initiate a capture of the screen." +
           lineBreak +
           "3. Wait until you see the \"Bitmap captured\" status message on the KRV.  (This may "
           "take up to 20 seconds.)" +
           lineBreak + "4. Click \"OK\" to complete the capture of the image.";
}

Preparation CaptureByHand(ports::ScreenImageServer& server, ports::MessageBoxes& messageBoxes) {
    using ports::MessageAnswer;
    while (messageBoxes.Show({Instructions(), ScreenImageTitle, ports::MessageIcon::Exclamation,
                              ports::MessageButtons::OkCancel}) == MessageAnswer::Ok) {
        if (server.Instrument()->FileExists(CaptureFile)) {
            return Preparation::Done;
        }
        if (messageBoxes.Show({"Bitmap not found in instrument", ScreenImageTitle,
                               ports::MessageIcon::Critical, ports::MessageButtons::RetryCancel}) !=
            MessageAnswer::Retry) {
            return Preparation::NotFound;
        }
    }
    return Preparation::Declined;
}

}  // namespace

Preparation PrepareScreenImage(ports::ScreenImageServer& server, ports::EventPump& eventPump,
                               ports::MessageBoxes& messageBoxes) {
    eventPump.ProcessPendingEvents();
    server.PrepareForCapture();
    const bool byHand = server.ModelName().find(OlderSeries) != std::string::npos;
    return byHand ? CaptureByHand(server, messageBoxes) : Preparation::Done;
}

}  // namespace krv::image
