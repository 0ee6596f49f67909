// The server's part in fetching screen images.
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "suite/picture/BitmapFile.h"
#include "suite/picture/PictureFile.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

constexpr const char* CaptureFile = "DISPLAY.BMP";

picture::PictureFormat FormatFor(const std::string& file, std::int32_t code) {
    switch (code) {
        case ports::ImageFormat::Placement:
            return picture::PictureFormat::PlaceableMetafile;
        case ports::ImageFormat::ByExtension:
            return picture::FormatOfFile(file);
        default:
            throw Error(ErrorNumber::InvalidCall,
                        "There is no picture format " + std::to_string(code) + '.');
    }
}

}  // namespace

// A capture by hand may have been made already, and stays until it has been fetched.
void ScpiInstrumentServer::PrepareForCapture() {}

std::string ScpiInstrumentServer::ModelName() {
    return m_instrument->Model();
}

void ScpiInstrumentServer::SaveScreenImage(const std::string& file, std::int32_t format) {
    const picture::PictureFormat kind = FormatFor(file, format);
    const picture::Picture image = picture::ParseBitmapFile(FetchCapture());
    picture::WriteWhole(file, picture::EncodePicture(image, kind));
    if (CapturesByHand()) {
        // The picture is written: a capture that stays behind is no failure.
        TrapErrors([this] { m_instrument->DeleteFile(CaptureFile); });
    }
}

// The older series, whose models' names have a B.
bool ScpiInstrumentServer::CapturesByHand() const {
    return m_instrument->Model().find('B') != std::string::npos;
}

std::string ScpiInstrumentServer::FetchCapture() {
    if (!CapturesByHand()) {
        m_instrument->CaptureScreen();
    }
    if (!m_instrument->FileExists(CaptureFile)) {
        throw ServerError("The instrument holds no capture of its screen (DISPLAY.BMP).");
    }
    return m_instrument->ReadFile(CaptureFile);
}

}  // namespace krv::suite
