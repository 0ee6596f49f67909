#include "waveform/dialog/FormReading.h"

#include <string>
#include <utility>

#include "common/Numbers.h"
#include "common/Text.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {
namespace {

std::string Trimmed(const forms::TextBox& box) {
    return std::string(TrimBlanks(box.Text.Get()));
}

std::string FileNameIn(const forms::TextBox& box) {
    return std::string(PathIn(box.Text.Get()));
}

// A box without a choice counts as one with the first.
FileType FileTypeAt(int index) {
    return index < FileTypeIndex::LittleEndian    ? FileType::Ascii
           : index == FileTypeIndex::LittleEndian ? FileType::LittleEndian
                                                  : FileType::BigEndian;
}

WaveformType WaveformTypeAt(int index) {
    return index <= WaveformTypeIndex::Scalable     ? WaveformType::Scalable
           : index == WaveformTypeIndex::Internal14 ? WaveformType::Internal14
                                                    : WaveformType::Internal16;
}

}  // namespace

SourceKind SourceOf(const frmDataTransfer& dialog) {
    return dialog.optFileFolders.Value ? SourceKind::Files : SourceKind::Cells;
}

std::string SourceName(const frmDataTransfer& dialog) {
    if (SourceOf(dialog) == SourceKind::Cells) {
        return Trimmed(dialog.textIRange);
    }
    const std::string path = FileNameIn(dialog.TextIFileName);
    return path.substr(path.find_last_of("/\\:") + 1);
}

DownloadInputs ReadInputs(const frmDataTransfer& dialog) {
    ports::FileSystem& files = dialog.Services().files;
    const auto exists = [&](const forms::TextBox& box) {
        const std::string name = FileNameIn(box);
        return !name.empty() && files.FileExists(name);
    };
    DownloadInputs inputs;
    inputs.fileSource = dialog.optFileFolders.Value;
    inputs.iqInterleaved = dialog.IQInterleaved;
    inputs.useQData = dialog.UseQData;
    inputs.iFileName = FileNameIn(dialog.TextIFileName);
    inputs.iFileExists = exists(dialog.TextIFileName);
    inputs.qFileExists = exists(dialog.TextQFileName);
    inputs.iRange = dialog.textIRange.Text;
    inputs.iNumberPoints = dialog.textINumberPoints.Text;
    inputs.qNumberPoints = dialog.textQNumberPoints.Text;
    inputs.waveformType = dialog.cboWaveformType.ListIndex;
    inputs.waveformTypeSS = dialog.cboWaveformTypeSS.ListIndex;
    inputs.scaleFactor = dialog.TextScaleFactor.Text;
    inputs.markerFromFile = dialog.chkMarkerSource.Value;
    inputs.markerStart = dialog.TextMarkerStart.Text;
    inputs.markerLength = dialog.TextMarkerLength.Text;
    inputs.numberFormat = dialog.Services().numberFormat;
    return inputs;
}

DownloadPlan ReadPlan(const frmDataTransfer& dialog, RunMode mode, InstrumentInUse instrument) {
    const bool files = dialog.optFileFolders.Value;
    const int fileWaveformType = dialog.cboWaveformType.ListIndex;
    const int cellWaveformType = dialog.cboWaveformTypeSS.ListIndex;
    DownloadPlan plan;
    plan.instrument = std::move(instrument);
    plan.mode = mode;
    plan.source = SourceOf(dialog);
    plan.useQ = dialog.UseQData;
    plan.iSource = files ? FileNameIn(dialog.TextIFileName) : Trimmed(dialog.textIRange);
    plan.qSource = files ? FileNameIn(dialog.TextQFileName) : Trimmed(dialog.textQRange);
    plan.iSheet = dialog.IRangeSheet;
    plan.qSheet = dialog.QRangeSheet;
    plan.fileType = FileTypeAt(dialog.cboFileTypeWF.ListIndex);
    plan.type = WaveformTypeAt(files ? fileWaveformType : cellWaveformType);
    plan.speaksOfIntegers = fileWaveformType > WaveformTypeIndex::Scalable ||
                            cellWaveformType > WaveformTypeIndex::Scalable;
    plan.scalePercent =
        FieldNumber(dialog.TextScaleFactor.Text.Get(), dialog.Services().numberFormat);
    plan.markersFromFile = dialog.chkMarkerSource.Value;
    plan.markerFile = FileNameIn(dialog.TextMarker);
    plan.markerStart = dialog.TextMarkerStart.Text;
    plan.markerLength = dialog.TextMarkerLength.Text;
    plan.destination = Trimmed(dialog.TextDestinationName);
    plan.verifyWith = dialog.VerifyWith;
    return plan;
}

}  // namespace krv::waveform
