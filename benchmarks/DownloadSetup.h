// DownloadSetup: the download dialog on a terminal screen, connected to an instrument; what the
// command line front is made of, without its texts.
#pragma once

#include <optional>
#include <string>

#include "cli/Arguments.h"
#include "cli/CancelKey.h"
#include "cli/InstrumentLink.h"
#include "cli/ProgressLines.h"
#include "cli/SystemClock.h"
#include "cli/TerminalScreen.h"
#include "common/files/StandardFiles.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::benchmarks {

class DownloadSetup {
 public:
    // Progress is drawn into the stream; null draws none. Without an address there is no
    // instrument.
    explicit DownloadSetup(const std::string& address = {}, std::ostream* terminal = nullptr);

    // Fills the dialog and presses its download button; throws std::runtime_error when the run
    // doesn't succeed.
    void Download(const cli::WaveformArguments& arguments);

    [[nodiscard]] waveform::frmDataTransfer& Dialog() noexcept { return m_dialog; }

 private:
    // The key is never pressed.
    class NoInterruptions final : public cli::Interruptions {
     public:
        void Watch(Callback, void*) override {}
        void StopWatching() override {}
        void Warn(const char*) noexcept override {}
        void EndProgram(int) noexcept override {}
    };
    // Agrees to everything and remembers what it said last.
    class AgreeingUser final : public ports::MessageBoxes {
     public:
        ports::MessageAnswer Show(const ports::Message& message) override {
            LastText = message.text;
            return message.buttons == ports::MessageButtons::YesNo ? ports::MessageAnswer::Yes
                                                                   : ports::MessageAnswer::Ok;
        }
        std::string LastText;
    };
    class NoFileDialogs final : public ports::FileDialogs {
     public:
        std::optional<std::string> ChooseFileToOpen(const ports::FileDialogRequest&) override {
            return std::nullopt;
        }
        std::optional<std::string> ChooseFileToSave(const ports::FileDialogRequest&) override {
            return std::nullopt;
        }
    };

    NoInterruptions m_interruptions;
    cli::CancelKey m_cancelKey{m_interruptions};
    cli::ProgressLines m_progress;
    cli::TerminalScreen m_screen{m_cancelKey, m_progress};
    AgreeingUser m_user;
    NoFileDialogs m_fileDialogs;
    cli::SystemClock m_clock;
    files::StandardFiles m_files;
    std::optional<cli::InstrumentLink> m_link;
    waveform::frmDataTransfer m_dialog{
        {m_screen, m_user, m_fileDialogs, m_screen, m_clock, m_files, NumberFormat{}}};
};

// What downloads a file of 16-bit samples as they are.
[[nodiscard]] cli::WaveformArguments InternalSamples(const std::string& path);

}  // namespace krv::benchmarks
