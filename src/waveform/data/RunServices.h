// RunServices: what every step of a run may need besides the plan.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ports/desktop/Desktop.h"
#include "ports/office/Excel.h"
#include "waveform/data/RunProgress.h"

namespace krv::waveform {

// How the message begins that ends a successful download.
inline constexpr std::string_view DownloadComplete = "Download complete.";

enum class ChannelRole : std::uint8_t { I, Q, Markers };

// The side that started the run: shows its messages and what it finds on the way.
class RunUser {
 public:
    virtual ~RunUser() = default;
    // Shows a message box that belongs to the run.
    virtual ports::MessageAnswer Tell(
        const std::string& text, ports::MessageIcon icon,
        ports::MessageButtons buttons = ports::MessageButtons::Ok) = 0;
    // A channel was read just now and has so many points.
    virtual void ShowCount(ChannelRole channel, std::int32_t count) = 0;
    // What a file holds could not be read as numbers; a message has said so.
    virtual void CouldNotRead(const std::string& file) = 0;
    // A file has changed since it was read: no channel counts as loaded any more.
    virtual void FilesChanged() = 0;
};

// References to services that outlive the run.
struct RunServices {
    const ports::Desktop& desktop;
    RunProgress& progress;
    RunUser& user;
    // The spreadsheet that range texts belong to; null without one.
    ports::ExcelApplication* excel = nullptr;
};

}  // namespace krv::waveform
