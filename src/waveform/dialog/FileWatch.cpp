#include "waveform/dialog/FileWatch.h"

#include "common/Error.h"
#include "common/Text.h"
#include "waveform/dialog/BoxLooks.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {

FileWatch::FileWatch(frmDataTransfer& dialog)
    : m_files(dialog.Services().files),
      m_channels{{
          {dialog.TextIFileName,
           dialog.textISize,
           dialog.Data.IData,
           dialog.Data.INumPoints,
           dialog.Data.IDataLoaded,
           dialog.Data.IFileDate,
           dialog.textISize.ToolTipText,
           {}},
          {dialog.TextQFileName,
           dialog.textQSize,
           dialog.Data.QData,
           dialog.Data.QNumPoints,
           dialog.Data.QDataLoaded,
           dialog.Data.QFileDate,
           dialog.textQSize.ToolTipText,
           {}},
          {dialog.TextMarker,
           dialog.TextMarkerFileNumPoints,
           dialog.Data.MarkerData,
           dialog.Data.MarkerNumPoints,
           dialog.Data.MarkerDataLoaded,
           dialog.Data.MarkerFileDate,
           dialog.TextMarkerFileNumPoints.ToolTipText,
           {}},
      }} {}

void FileWatch::Check() {
    for (Channel& channel : m_channels) {
        CheckChannel(channel);
    }
}

void FileWatch::ForgetAll() {
    for (Channel& channel : m_channels) {
        Forget(channel);
    }
}

void FileWatch::CheckChannel(Channel& channel) {
    const std::string name(TrimBlanks(channel.fileName.Text.Get()));
    if (name != channel.seenName) {
        Forget(channel);
        channel.seenName = name;
    }
    if (!name.empty() && !m_files.FileExists(name)) {
        ShowCountError(channel.count, "File does not exist.");
        return;
    }
    if (channel.loaded && HasChanged(channel, name)) {
        Forget(channel);
    }
    ShowCount(channel.count, channel.loaded ? std::to_string(channel.numPoints) : std::string(),
              channel.countTip);
}

bool FileWatch::HasChanged(const Channel& channel, const std::string& name) {
    try {
        return m_files.DateLastModified(name) != channel.date;
    } catch (const Error&) {
        return true;  // gone since the existence test, or no longer readable
    }
}

void FileWatch::Forget(Channel& channel) {
    channel.loaded = false;
    channel.numPoints = 0;
    channel.values.Clear();
}

}  // namespace krv::waveform
