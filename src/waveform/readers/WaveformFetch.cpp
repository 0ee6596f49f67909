#include "waveform/readers/WaveformFetch.h"

#include <new>

#include "common/Error.h"
#include "common/Text.h"
#include "common/progress/ProgressLink.h"
#include "waveform/checks/MarkerPulse.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "waveform/readers/AsciiDataFile.h"
#include "waveform/readers/BinaryDataFiles.h"
#include "waveform/readers/MarkerField.h"

namespace krv::waveform {
namespace {

using ports::MessageIcon;

constexpr std::int16_t PhaseRow = 2;

// The part of the overall progress that reading takes; the sources share it in equal slices.
constexpr std::int32_t OverallStart = 100;
constexpr std::int32_t OverallEnd = 500;

// The second row of the progress dialog.
class PhaseProgress final : public ReadProgress {
 public:
    explicit PhaseProgress(progress::frmCallback& dialog) : m_dialog(dialog) {}

    void ShowMessage(const std::string& text) override {
        m_dialog.SetWaitMessage(std::int16_t{PhaseRow}, text);
    }
    void ShowProgress(std::int32_t maximum, std::int32_t value) override {
        m_dialog.SetProgressBar(std::int16_t{PhaseRow}, 0, std::move(maximum), std::move(value));
    }
    bool IsCancelled() override { return m_dialog.TestCancelFlagInLoop(); }

 private:
    progress::frmCallback& m_dialog;
};

std::string ConversionPrefix(const std::string& file) {
    return "Error processing " + file +
           ".  The file does not appear to contain numeric ASCII "
           "data, separated by white space." +
           std::string(CrLf) + "Please confirm that the specified File Format is correct.";
}

}  // namespace

// One of the files, and where its data goes.
struct WaveformFetch::Source {
    FileToRead file;
    SampleBuffer<double>& values;
    std::int32_t& count;
    ports::FileTime& date;
    bool& isLoaded;
    forms::TextBox& countBox;
    // Its place among the sources that take part.
    std::int32_t position;
};

WaveformFetch::Source WaveformFetch::ISource() {
    WaveformData& data = m_dialog.Data;
    return {{std::string(TrimBlanks(m_dialog.TextIFileName.Text.Get())), "I-File",
             ConversionPrefix("I-File")},
            data.IData,
            data.INumPoints,
            data.IFileDate,
            data.IDataLoaded,
            m_dialog.textISize,
            0};
}

WaveformFetch::Source WaveformFetch::QSource() {
    WaveformData& data = m_dialog.Data;
    return {{std::string(TrimBlanks(m_dialog.TextQFileName.Text.Get())), "Q-File",
             ConversionPrefix("Q-File")},
            data.QData,
            data.QNumPoints,
            data.QFileDate,
            data.QDataLoaded,
            m_dialog.textQSize,
            1};
}

WaveformFetch::Source WaveformFetch::MarkerSource() {
    WaveformData& data = m_dialog.Data;
    return {{std::string(TrimBlanks(m_dialog.TextMarker.Text.Get())), "Marker File",
             ConversionPrefix("marker file")},
            data.MarkerData,
            data.MarkerNumPoints,
            data.MarkerFileDate,
            data.MarkerDataLoaded,
            m_dialog.TextMarkerFileNumPoints,
            data.UseQData ? 2 : 1};
}

bool WaveformFetch::Run() {
    DiscardStaleData();
    const bool fetched = m_dialog.optFileFolders.Value ? FetchFiles() : FetchRanges();
    return fetched && FetchMarkers();
}

// One changed file discards everything that was loaded. All files are tested before the first is
// read, so that a changed marker file cannot discard what this very run has read.
void WaveformFetch::DiscardStaleData() {
    const bool fromFiles = m_dialog.optFileFolders.Value;
    const bool stale = (fromFiles && IsStale(ISource())) ||
                       (fromFiles && m_dialog.Data.UseQData && IsStale(QSource())) ||
                       (m_dialog.chkMarkerSource.Value && IsStale(MarkerSource()));
    if (stale) {
        m_dialog.Data.IDataLoaded = false;
        m_dialog.Data.QDataLoaded = false;
        m_dialog.Data.MarkerDataLoaded = false;
        m_dialog.WatchFiles();
    }
}

bool WaveformFetch::IsStale(const Source& source) {
    ports::FileSystem& files = m_dialog.Services().files;
    if (!source.isLoaded || !files.FileExists(source.file.fileName)) {
        return false;
    }
    try {
        return files.DateLastModified(source.file.fileName) != source.date;
    } catch (const Error&) {
        // Gone in between: what was read from it is still the last that is known of it.
        return false;
    }
}

bool WaveformFetch::FetchFiles() {
    return Load(ISource()) && (!m_dialog.Data.UseQData || Load(QSource()));
}

bool WaveformFetch::FetchRanges() {
    const auto resolve = [this](const forms::TextBox& box, const std::string& message,
                                std::shared_ptr<ports::Range>& range, std::int32_t& count) {
        m_dialog.Callback1().SetWaitMessage(std::int16_t{PhaseRow}, message);
        range = m_dialog.Excel()->ResolveRange(std::string(TrimBlanks(box.Text.Get())));
        count = range->CellCount();
    };
    if (m_dialog.Excel() == nullptr) {
        m_dialog.ShowMessage(
            "There is no running Excel to read the data from.  Please start Excel and open the "
            "workbook, or choose files as the source.",
            MessageIcon::Exclamation);
        return false;
    }
    WaveformData& data = m_dialog.Data;
    try {
        resolve(m_dialog.textIRange, "Fetching I (and Q)-Range Data...", data.IRange,
                data.IRangeCount);
        if (data.UseQData) {
            resolve(m_dialog.textQRange, "Fetching Q-Range Data...", data.QRange, data.QRangeCount);
        }
    } catch (const Error& error) {
        m_dialog.ShowMessage("Excel reports a syntax error in the Data Range specification." +
                                 std::string(CrLf) + error.Description(),
                             MessageIcon::Exclamation);
        return false;
    }
    return true;
}

bool WaveformFetch::FetchMarkers() {
    return m_dialog.chkMarkerSource.Value ? FetchMarkerFile() : BuildMarkers();
}

bool WaveformFetch::FetchMarkerFile() {
    const Source source = MarkerSource();
    if (source.file.fileName.empty()) {
        m_dialog.ShowMessage("No marker file name specified", MessageIcon::Exclamation);
        return false;
    }
    if (!source.isLoaded && !m_dialog.Services().files.FileExists(source.file.fileName)) {
        m_dialog.ShowMessage("Invalid marker file name", MessageIcon::Exclamation);
        return false;
    }
    return Load(source);
}

bool WaveformFetch::BuildMarkers() {
    WaveformData& data = m_dialog.Data;
    const NumberFormat format = m_dialog.Services().numberFormat;
    const std::int32_t count = m_dialog.optFileFolders.Value ? data.INumPoints : data.IRangeCount;
    // The pulse takes the place of what a marker file had given.
    data.MarkerDataLoaded = false;
    try {
        const std::int16_t start = MarkerFieldValue("Event Marker Starting Point",
                                                    m_dialog.TextMarkerStart.Text.Get(), format);
        const std::int16_t length = MarkerFieldValue("Event Marker Number of Points",
                                                     m_dialog.TextMarkerLength.Text.Get(), format);
        BuildMarkerPulse(data.MarkerData, start, length, count);
    } catch (const Error& error) {
        m_dialog.ShowMessage(error.Description(), MessageIcon::Exclamation);
        return false;
    } catch (const std::bad_alloc&) {
        m_dialog.ShowMessage("There is not enough memory for the markers.", MessageIcon::Critical);
        return false;
    }
    data.MarkerNumPoints = count;
    return true;
}

bool WaveformFetch::Load(const Source& source) {
    if (source.isLoaded) {
        return true;
    }
    // Given back first, so that the old data and the new are never held together.
    source.values.Clear();
    source.count = 0;
    if (!ReadInto(source)) {
        return false;
    }
    source.countBox.Text = std::to_string(source.count);
    source.isLoaded = true;
    return true;
}

bool WaveformFetch::ReadInto(const Source& source) {
    const WaveformData& data = m_dialog.Data;
    const std::int32_t sources =
        1 + (data.UseQData ? 1 : 0) + (m_dialog.chkMarkerSource.Value ? 1 : 0);
    const auto border = [sources](std::int32_t position) {
        return OverallStart + (OverallEnd - OverallStart) * position / sources;
    };
    const progress::ProgressLink link(m_dialog.Callback1(), PhaseRow, border(source.position),
                                      border(source.position + 1));
    try {
        FileSamples samples = Read(source);
        source.values = std::move(samples.values);
        source.count = samples.count;
        source.date = samples.fileDate;
        return true;
    } catch (const Error& error) {
        ShowReadFailure(source, error);
    } catch (const std::bad_alloc&) {
        m_dialog.ShowMessage("There is not enough memory for the data of the " + source.file.label +
                                 " (" + source.file.fileName + ").",
                             MessageIcon::Critical);
    }
    return false;
}

FileSamples WaveformFetch::Read(const Source& source) {
    const ports::Desktop& desktop = m_dialog.Services();
    PhaseProgress progress(m_dialog.Callback1());
    const ReadServices services{desktop.files, desktop.clock, progress, desktop.numberFormat};
    const int fileType = m_dialog.cboFileTypeWF.ListIndex;
    if (fileType < FileTypeIndex::LittleEndian) {
        return ReadAsciiDataFile(source.file, services);
    }
    if (&source.values == &m_dialog.Data.MarkerData) {
        return ReadBinaryMarkerFile(source.file, services);
    }
    return ReadBinaryDacFile(source.file,
                             fileType == FileTypeIndex::LittleEndian
                                 ? SampleFormat::LittleEndianSigned
                                 : SampleFormat::BigEndianUnsigned,
                             services);
}

// The readers' own findings are ready to be shown; what the file system reports may not say which
// of the files it was about.
void WaveformFetch::ShowReadFailure(const Source& source, const Error& error) {
    if (error.IsCancel()) {
        return;
    }
    switch (error.Number()) {
        case ErrorNumber::InvalidFileFormat:
        case ErrorNumber::InputPastEndOfFile:
            m_dialog.ShowMessage(error.Description(), MessageIcon::None);
            break;
        case ErrorNumber::TypeMismatch:
        case ErrorNumber::Overflow:
            m_dialog.ShowMessage(error.Description(), MessageIcon::Exclamation);
            break;
        default:
            m_dialog.ShowMessage("The " + source.file.label + " (" + source.file.fileName +
                                     ") could not be read." + std::string(CrLf) +
                                     error.Description(),
                                 MessageIcon::Critical);
    }
}

}  // namespace krv::waveform
