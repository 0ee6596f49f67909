// WaveformFetch: the fetch step of a run, which decides what must be read again and reads it.
#pragma once

#include <cstdint>
#include <string>

#include "waveform/readers/FileReading.h"

namespace krv::waveform {

class frmDataTransfer;

class WaveformFetch {
 public:
    explicit WaveformFetch(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // True when all needed data is in the dialog's Data. A failure has been shown to the user, a
    // cancel has not; in both cases nothing that failed is marked loaded, and what was loaded
    // before from other files stays.
    bool Run();

 private:
    struct Source;

    [[nodiscard]] Source ISource();
    [[nodiscard]] Source QSource();
    [[nodiscard]] Source MarkerSource();

    void DiscardStaleData();
    [[nodiscard]] bool IsStale(const Source& source);
    bool FetchFiles();
    bool FetchRanges();
    bool FetchMarkers();
    bool FetchMarkerFile();
    bool BuildMarkers();
    bool Load(const Source& source);
    bool ReadInto(const Source& source);
    [[nodiscard]] FileSamples Read(const Source& source);
    void ShowReadFailure(const Source& source, const Error& error);

    frmDataTransfer& m_dialog;
};

}  // namespace krv::waveform
