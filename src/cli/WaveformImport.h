// WaveformImport: brings the files of a check, download or conversion into the form that the
// dialog's readers take, where they are of another program. It owns the imported waveform.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/ImportSource.h"
#include "cli/ImportedFiles.h"
#include "formats/Import.h"

namespace krv::cli {

class WaveformImport {
 public:
    // Nothing where the dialog's own readers take the files. The files outlive the import. Throws
    // UsageError for options that don't go together, and the file system's errors.
    [[nodiscard]] static std::unique_ptr<WaveformImport> For(const WaveformArguments& arguments,
                                                             Console& console,
                                                             ImportedFiles& files);

    // What the dialog is filled with until the model is known.
    [[nodiscard]] WaveformArguments FirstEntries() const;

    // Reads everything. `lookUp` may throw to end it. Throws as formats::Import does.
    void Read(const std::function<void()>& lookUp);

    // Takes what another one has read of the same files, in place of reading them.
    void TakeFrom(const WaveformImport& other);

    // Puts what was read among the files in the form for the model and returns what the dialog is
    // to be filled with. Throws Error 6 for values beyond full scale.
    [[nodiscard]] WaveformArguments EntriesFor(const std::string& model);

    // Null before it is read.
    [[nodiscard]] const formats::ImportedWaveform* Waveform() const noexcept {
        return m_waveform.get();
    }

 private:
    WaveformImport(const WaveformArguments& arguments, Console& console, ImportedFiles& files);

    void TakeQ(formats::ImportedWaveform& waveform, const std::function<void()>& lookUp);
    void TakeMarkerFile(formats::ImportedWaveform& waveform, const std::function<void()>& lookUp);
    void TakePulse(formats::ImportedWaveform& waveform);
    [[nodiscard]] formats::ImportedWaveform ReadSource(const std::string& text,
                                                       const std::function<void()>& lookUp);
    [[nodiscard]] std::string IName() const;
    void PutCodes16(WaveformArguments& entries);
    void PutCodes14(WaveformArguments& entries);
    void PutNumbers(WaveformArguments& entries);

    const WaveformArguments& m_arguments;
    Console& m_console;
    ImportedFiles& m_files;
    SourceName m_source;
    formats::ImportOptions m_options;
    std::shared_ptr<formats::ImportedWaveform> m_waveform;
    bool m_pulseIsTaken = false;
};

}  // namespace krv::cli
