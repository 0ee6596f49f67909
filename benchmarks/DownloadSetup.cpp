#include "benchmarks/DownloadSetup.h"

#include <stdexcept>

#include "cli/FormFilling.h"

namespace krv::benchmarks {
namespace {

constexpr int TerminalWidth = 80;

}  // namespace

DownloadSetup::DownloadSetup(const std::string& address, std::ostream* terminal)
    : m_progress(terminal, TerminalWidth) {
    if (!address.empty()) {
        cli::ConnectionArguments arguments;
        arguments.address = address;
        m_link.emplace(arguments);
        m_dialog.instrServer = m_link->Server();
    }
    m_dialog.Load();
}

void DownloadSetup::Download(const cli::WaveformArguments& arguments) {
    cli::FormFilling(m_screen, m_dialog).Fill(arguments);
    m_dialog.ShowModeless();
    if (!m_screen.Click(m_dialog.cmdDownload) || !m_dialog.RunSucceeded) {
        throw std::runtime_error("the download failed: " + m_user.LastText);
    }
}

cli::WaveformArguments InternalSamples(const std::string& path) {
    cli::WaveformArguments arguments;
    arguments.name = "WAVE";
    arguments.iFile = path;
    arguments.fileType = waveform::FileTypeIndex::LittleEndian;
    arguments.waveformType = waveform::WaveformTypeIndex::Internal16;
    return arguments;
}

}  // namespace krv::benchmarks
