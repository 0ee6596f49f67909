#include "waveform/readers/WaveformFetch.h"

#include <memory>
#include <new>
#include <string>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "waveform/readers/AsciiDataFile.h"
#include "waveform/readers/BinaryDataFiles.h"
#include "waveform/readers/MarkerPulse.h"

namespace krv::waveform {
namespace {

using ports::MessageIcon;

// One of the files, and where its data goes.
struct Source {
    ChannelRole role;
    FileToRead file;
    Channel& channel;
    // Its place among the sources that take part.
    std::int32_t position;
};

std::string ConversionPrefix(const std::string& file) {
    return "Error processing " + file +
           ".  The file does not appear to contain numeric ASCII "
           "data, separated by white space." +
           std::string(CrLf) + "Please confirm that the specified File Format is correct.";
}

class Fetch {
 public:
    Fetch(const DownloadPlan& plan, const RunServices& services, WaveformData& data)
        : m_plan(plan), m_services(services), m_data(data) {}

    bool Run() {
        DiscardStaleData();
        const bool fetched = FromFiles() ? FetchFiles() : FetchRanges();
        return fetched && (m_plan.markersFromFile ? FetchMarkerFile() : BuildPulse());
    }

 private:
    [[nodiscard]] bool FromFiles() const { return m_plan.source == SourceKind::Files; }

    [[nodiscard]] Source ISource() {
        return {
            ChannelRole::I, {m_plan.iSource, "I-File", ConversionPrefix("I-File")}, m_data.i, 0};
    }
    [[nodiscard]] Source QSource() {
        return {
            ChannelRole::Q, {m_plan.qSource, "Q-File", ConversionPrefix("Q-File")}, m_data.q, 1};
    }
    [[nodiscard]] Source MarkerSource() {
        return {ChannelRole::Markers,
                {m_plan.markerFile, "Marker File", ConversionPrefix("marker file")},
                m_data.markers,
                m_plan.useQ ? 2 : 1};
    }

    // One changed file discards everything that was loaded. All files are tested before the first
    // is read, so that a changed marker file cannot discard what this very run has read.
    void DiscardStaleData() {
        const bool stale = (FromFiles() && IsStale(ISource())) ||
                           (FromFiles() && m_plan.useQ && IsStale(QSource())) ||
                           (m_plan.markersFromFile && IsStale(MarkerSource()));
        if (stale) {
            for (Channel* channel : {&m_data.i, &m_data.q, &m_data.markers}) {
                channel->loaded = false;
            }
            m_services.user.FilesChanged();
        }
    }

    [[nodiscard]] bool IsStale(const Source& source) const {
        ports::FileSystem& files = m_services.desktop.files;
        if (!source.channel.loaded || !files.FileExists(source.file.fileName)) {
            return false;
        }
        try {
            return files.DateLastModified(source.file.fileName) != source.channel.date;
        } catch (const Error&) {
            // Gone in between: what was read from it is still the last that is known of it.
            return false;
        }
    }

    bool FetchFiles() { return Load(ISource()) && (!m_plan.useQ || Load(QSource())); }

    bool FetchRanges() {
        try {
            m_data.iRange = Resolve(m_plan.iSource, "Fetching I (and Q)-Range Data...");
            if (m_plan.useQ) {
                m_data.qRange = Resolve(m_plan.qSource, "Fetching Q-Range Data...");
            }
            return IsStillMeant(m_data.iRange, m_plan.iSource, m_plan.iSheet) &&
                   (!m_plan.useQ || IsStillMeant(m_data.qRange, m_plan.qSource, m_plan.qSheet));
        } catch (const Error& error) {
            m_services.user.Tell("Excel reports a syntax error in the Data Range specification." +
                                     std::string(CrLf) + error.Description(),
                                 MessageIcon::Critical);
            return false;
        }
    }

    [[nodiscard]] CellRange Resolve(const std::string& text, const std::string& message) const {
        m_services.progress.ShowMessage(message);
        if (m_services.excel == nullptr) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        auto cells = m_services.excel->ResolveRange(text);
        const std::int32_t count = cells->CellCount();
        return {std::move(cells), count};
    }

    // A range text without a sheet means the active one, which may have changed since the user saw
    // the text checked: then the user decides.
    [[nodiscard]] bool IsStillMeant(const CellRange& range, const std::string& text,
                                    const ports::SheetName& checked) const {
        ports::SheetName now;
        TrapErrors([&] { now = range.cells->Sheet(); });
        const ports::SheetName unknown;
        if (now == checked || now == unknown || checked == unknown) {
            return true;
        }
        const auto nameOf = [](const ports::SheetName& name) {
            return "sheet " + name.sheet + " of " + name.workbook;
        };
        return m_services.user.Tell("The Data Range " + text + " was checked on " +
                                        nameOf(checked) + ".  Now it stands for cells on " +
                                        nameOf(now) + "." + std::string(CrLf) + std::string(CrLf) +
                                        "Do you want to continue?",
                                    MessageIcon::Exclamation,
                                    ports::MessageButtons::YesNo) == ports::MessageAnswer::Yes;
    }

    bool FetchMarkerFile() {
        const Source source = MarkerSource();
        if (source.file.fileName.empty()) {
            m_services.user.Tell("No marker file name specified", MessageIcon::Exclamation);
            return false;
        }
        if (!source.channel.loaded && !m_services.desktop.files.FileExists(source.file.fileName)) {
            m_services.user.Tell("Invalid marker file name", MessageIcon::Exclamation);
            return false;
        }
        return Load(source);
    }

    // The pulse takes the place of what a marker file had given.
    bool BuildPulse() {
        const NumberFormat format = m_services.desktop.numberFormat;
        const std::int32_t count = FromFiles() ? m_data.i.Count() : m_data.iRange.count;
        m_data.markers.loaded = false;
        try {
            MarkerPulse& pulse = m_data.pulse;
            pulse.start =
                MarkerFieldValue("Event Marker Starting Point", m_plan.markerStart, format);
            pulse.length =
                MarkerFieldValue("Event Marker Number of Points", m_plan.markerLength, format);
            m_data.markers.Forget();
            m_data.markers.values = BuildMarkerPulse(pulse.start, pulse.length, count);
        } catch (const Error& error) {
            m_services.user.Tell(error.Description(), MessageIcon::Exclamation);
            return false;
        } catch (const std::bad_alloc&) {
            m_services.user.Tell("There is not enough memory for the markers.",
                                 MessageIcon::Critical);
            return false;
        }
        return true;
    }

    bool Load(const Source& source) {
        if (source.channel.loaded) {
            return true;
        }
        // Given back first, so that the old data and the new are never held together.
        source.channel.Forget();
        const std::int32_t sources = 1 + (m_plan.useQ ? 1 : 0) + (m_plan.markersFromFile ? 1 : 0);
        const auto link = m_services.progress.LinkSource(source.position, sources);
        try {
            source.channel = Read(source);
        } catch (const Error& error) {
            ShowReadFailure(source, error);
            return false;
        } catch (const std::bad_alloc&) {
            m_services.user.Tell("There is not enough memory for the data of the " +
                                     source.file.label + " (" + source.file.fileName + ").",
                                 MessageIcon::Critical);
            return false;
        }
        m_services.user.ShowCount(source.role, source.channel.Count());
        return true;
    }

    [[nodiscard]] Channel Read(const Source& source) const {
        const ports::Desktop& desktop = m_services.desktop;
        const ReadServices services{desktop.files, desktop.clock, m_services.progress,
                                    desktop.numberFormat};
        if (m_plan.fileType == FileType::Ascii) {
            return ReadAsciiDataFile(source.file, services);
        }
        if (source.role == ChannelRole::Markers) {
            return ReadBinaryMarkerFile(source.file, services);
        }
        return ReadBinaryDacFile(source.file,
                                 m_plan.fileType == FileType::LittleEndian
                                     ? SampleFormat::LittleEndianSigned
                                     : SampleFormat::BigEndianUnsigned,
                                 services);
    }

    // The readers' own findings are ready to be shown; what the file system reports may not say
    // which of the files it was about.
    void ShowReadFailure(const Source& source, const Error& error) const {
        if (error.IsCancel()) {
            return;
        }
        switch (error.Number()) {
            case ErrorNumber::InvalidFileFormat:
            case ErrorNumber::InputPastEndOfFile:
                m_services.user.Tell(error.Description(), MessageIcon::Critical);
                break;
            case ErrorNumber::TypeMismatch:
            case ErrorNumber::Overflow:
                m_services.user.CouldNotRead(source.file.fileName);
                m_services.user.Tell(error.Description(), MessageIcon::Critical);
                break;
            default:
                m_services.user.Tell("The " + source.file.label + " (" + source.file.fileName +
                                         ") could not be read." + std::string(CrLf) +
                                         error.Description(),
                                     MessageIcon::Critical);
        }
    }

    const DownloadPlan& m_plan;
    const RunServices& m_services;
    WaveformData& m_data;
};

}  // namespace

bool FetchWaveformData(const DownloadPlan& plan, const RunServices& services, WaveformData& data) {
    return Fetch(plan, services, data).Run();
}

}  // namespace krv::waveform
