// ScreenImageServer: the instrument server as far as the picture on the instrument's display is
// fetched with it.
#pragma once

#include <cstdint>
#include <string>

#include "ports/suite/InstrumentServer.h"

namespace krv::ports {

namespace ImageFormat {
// A metafile that office applications insert.
inline constexpr std::int32_t Placement = 4;
// What the file name's extension says.
inline constexpr std::int32_t ByExtension = 100;
}  // namespace ImageFormat

class ScreenImageServer : public InstrumentServer {
 public:
    // Called once before the model is read.
    virtual void PrepareForCapture() = 0;
    virtual std::string ModelName() = 0;
    // Fetches the instrument's screen capture and writes it to a local file, whole or not at all;
    // the format is one of ImageFormat.
    virtual void SaveScreenImage(const std::string& file, std::int32_t format) = 0;
};

}  // namespace krv::ports
