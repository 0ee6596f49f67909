// DownloadRig: the download dialog on a scripted desktop, connected through the real instrument
// server to a simulated generator: everything of a download but the screen and the disk.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/device/Generator.h"
#include "simulator/server/GeneratorServer.h"
#include "simulator/server/SimulatedTransport.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/transport/ForwardingTransport.h"
#include "tests/support/FakeExcel.h"
#include "tests/support/QuietAppConnection.h"
#include "tests/support/ScriptedDesktop.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::tests {

// Wraps a transport and reports what is about to be sent.
class WatchedTransport final : public suite::ForwardingTransport {
 public:
    using Watcher = std::function<void(std::string_view)>;

    WatchedTransport(std::unique_ptr<suite::Transport> transport, const Watcher& watcher,
                     std::uint64_t& bytesSent)
        : ForwardingTransport(std::move(transport)), m_watcher(watcher), m_bytesSent(bytesSent) {}

    void Send(std::span<const std::byte> bytes, suite::MessagePart part) override {
        if (m_watcher) {
            m_watcher({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        }
        ForwardingTransport::Send(bytes, part);
        m_bytesSent += bytes.size();
    }

 private:
    const Watcher& m_watcher;
    std::uint64_t& m_bytesSent;
};

class DownloadRig {
 public:
    DownloadRig() {
        dialog.AppConnection = std::make_shared<ExcelConnection>(excel);
        dialog.ShowModeless();
        desktop.Screen.Activate(dialog);
    }

    ScriptedDesktop desktop;
    std::shared_ptr<FakeExcel> excel = std::make_shared<FakeExcel>();
    waveform::frmDataTransfer dialog{desktop.Services()};
    // Called with everything that is sent, before it is.
    WatchedTransport::Watcher onSend;
    // On all connections.
    std::uint64_t bytesSent = 0;

    // --- the instrument -------------------------------------------------------------------------
    void Connect(const std::string& address, const suite::TimeOuts& timeOuts) {
        suite::TransportRegistry registry;
        suite::AddTcpTransport(registry);
        simulator::AddSimulatedTransport(registry);
        registry.InterceptOpening([this](const std::string&, const auto& open) {
            return std::make_unique<WatchedTransport>(open(), onSend, bytesSent);
        });
        dialog.instrServer = nullptr;
        m_server = std::make_shared<suite::ScpiInstrumentServer>(registry, timeOuts);
        m_server->Connect(address);
        dialog.instrServer = m_server;
    }
    void Disconnect() { m_server->Disconnect(); }
    // From now on.
    void SetTimeOuts(const suite::TimeOuts& timeOuts) {
        m_server->ScpiAccess()->SetTimeOuts(timeOuts);
    }
    // Every download from now on is read back and compared.
    void Verify() { dialog.VerifyWith = m_server->Readback(); }
    [[nodiscard]] bool IsConnected() const { return m_server->Instrument()->IO() != nullptr; }

    // --- the user -------------------------------------------------------------------------------
    // Files as the dialog takes them; an empty name is none.
    void ChooseFiles(int waveformType, int fileType, const std::string& i, const std::string& q,
                     const std::string& markers) {
        auto& screen = desktop.Screen;
        dialog.optFileFolders.Value = true;
        screen.Select(dialog.cboWaveformType, waveformType);
        screen.Select(dialog.cboFileTypeWF, fileType);
        dialog.checkAutoFindQ.Value = false;
        dialog.checkAutoFindMarker.Value = false;
        dialog.TextIFileName.Text = i;
        dialog.TextQFileName.Text = q;
        dialog.chkMarkerSource.Value = !markers.empty();
        dialog.TextMarker.Text = markers;
    }
    void ChooseRanges(int waveformType, const std::string& i, const std::string& q) {
        dialog.optSpreadsheet.Value = true;
        desktop.Screen.Select(dialog.cboWaveformTypeSS, waveformType);
        dialog.textIRange.Text = i;
        dialog.textQRange.Text = q;
        dialog.chkMarkerSource.Value = false;
    }
    void Name(const std::string& name) {
        dialog.checkAutoName.Value = false;
        dialog.TextDestinationName.Text = name;
    }
    // Presses the button; the boxes that were shown, one a line, without title and buttons.
    std::string Download() {
        desktop.MessageBoxes.Shown.clear();
        dialog.RunSucceeded = false;
        desktop.Screen.Click(dialog.cmdDownload);
        std::string shown;
        for (const std::string& box : desktop.MessageBoxes.Shown) {
            const auto text = box.find(": ") + 2;
            shown += box.substr(text, box.rfind(" (") - text) + '\n';
        }
        return shown;
    }
    // What keeps the dialog from being used again; empty when nothing does.
    std::string Obstacles() {
        std::string obstacles;
        const auto note = [&obstacles](bool isThere, const char* what) {
            obstacles += isThere ? what : "";
        };
        note(!dialog.cmdDownload.Enabled, "the button is disabled; ");
        note(!dialog.IsVisible(), "the dialog has gone; ");
        note(dialog.Busy, "a run is under way; ");
        note(dialog.Callback1().IsVisible(), "the progress dialog stays; ");
        note(dialog.Callback1().TextProgress[1].Visible, "the times stay; ");
        return obstacles;
    }
    // The doubles remember everything; who goes on for long forgets it now and then.
    void ForgetWhatWasSeen() {
        desktop.Screen.Changes.clear();
        desktop.Screen.Repaints.clear();
        desktop.Screen.Shows.clear();
        desktop.MessageBoxes.Shown.clear();
    }

 private:
    class ExcelConnection final : public QuietAppConnection {
     public:
        explicit ExcelConnection(std::shared_ptr<ports::HostApplication> application)
            : m_application(std::move(application)) {}
        std::shared_ptr<ports::HostApplication> hostApp() override { return m_application; }

     private:
        std::shared_ptr<ports::HostApplication> m_application;
    };

    std::shared_ptr<suite::ScpiInstrumentServer> m_server;
};

// 16-bit samples of a wave within the 14-bit codes, in either byte order.
[[nodiscard]] inline std::string BinarySamples(std::size_t count, bool bigEndian) {
    std::string bytes;
    bytes.reserve(count * 2);
    for (std::size_t index = 0; index < count; ++index) {
        const auto code = static_cast<std::uint16_t>(4096 + index * 37 % 8192);
        const char low = static_cast<char>(code & 0xFFU);
        const char high = static_cast<char>(code >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

}  // namespace krv::tests
