#include "waveform/dialog/FileWatch.h"

#include "common/Error.h"
#include "common/Text.h"
#include "waveform/dialog/BoxLooks.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {

FileWatch::FileWatch(frmDataTransfer& dialog)
    : m_files(dialog.Services().files),
      m_watched{{
          {dialog.TextIFileName, dialog.textISize, dialog.Data.i, dialog.textISize.ToolTipText},
          {dialog.TextQFileName, dialog.textQSize, dialog.Data.q, dialog.textQSize.ToolTipText},
          {dialog.TextMarker, dialog.TextMarkerFileNumPoints, dialog.Data.markers,
           dialog.TextMarkerFileNumPoints.ToolTipText},
      }} {}

void FileWatch::Check() {
    for (const Watched& watched : m_watched) {
        CheckFile(watched);
    }
}

void FileWatch::ForgetAll() {
    for (const Watched& watched : m_watched) {
        watched.channel.Forget();
    }
}

void FileWatch::CheckFile(const Watched& watched) {
    Channel& channel = watched.channel;
    const std::string name(PathIn(watched.fileName.Text.Get()));
    // What comes from no file, a marker pulse, follows no name.
    if (!channel.source.empty() && channel.source != name) {
        channel.Forget();
    }
    if (!name.empty() && !m_files.FileExists(name)) {
        ShowCountError(watched.count, "File does not exist.");
        return;
    }
    if (channel.loaded && HasChanged(channel)) {
        channel.Forget();
    }
    ShowCount(watched.count, channel.loaded ? std::to_string(channel.Count()) : std::string(),
              watched.countTip);
}

bool FileWatch::HasChanged(const Channel& channel) {
    try {
        return m_files.DateLastModified(channel.source) != channel.date;
    } catch (const Error&) {
        return true;  // gone since the existence test, or no longer readable
    }
}

}  // namespace krv::waveform
