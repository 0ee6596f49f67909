// SeveralDownloads: one waveform to several instruments at once, each on a thread of its own. A
// failure at one doesn't stop the others. Questions are asked one after another, on the thread that
// calls.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/ImportedFiles.h"
#include "cli/ProgressTable.h"
#include "cli/SharedInterruptions.h"
#include "cli/WaveformImport.h"

namespace krv::cli {

class SeveralDownloads {
 public:
    // The arguments name several addresses.
    SeveralDownloads(const WaveformArguments& arguments, Console& console);
    ~SeveralDownloads();
    SeveralDownloads(const SeveralDownloads&) = delete;
    SeveralDownloads& operator=(const SeveralDownloads&) = delete;

    // Looks at the arguments and at no more. Throws UsageError.
    void Prepare();
    // Returns the exit code: that of a failure where there is one, or of a cancel. Every failure is
    // printed on standard error.
    [[nodiscard]] int Run();
    // The report of all downloads, for the exit code that they had.
    [[nodiscard]] std::string ReportText(int exitCode) const;

 private:
    // One of the downloads.
    class Lane;

    // What is to be imported is read once, for all.
    void Import();
    void MakeLanes();
    void RunLanes();
    void Fail(const std::string& description);
    // Answers the lanes' questions until all are done.
    void Attend();
    // Called on a lane's thread: what it has written, shown to the user, and the line that is
    // typed.
    [[nodiscard]] std::string Ask(Lane& lane);
    void Leave();
    void PrintLanes();
    [[nodiscard]] int ExitCodeOfAll() const;
    [[nodiscard]] std::string ReportText(const char* outcome) const;
    void WriteReport(const char* outcome) const;

    const WaveformArguments& m_arguments;
    Console& m_console;
    ImportedFiles m_files;
    std::unique_ptr<WaveformImport> m_import;
    SharedInterruptions m_interruptions;
    std::unique_ptr<ProgressTable> m_table;
    std::vector<std::unique_ptr<Lane>> m_lanes;
    // Of all lanes together, before they began.
    std::string m_error;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::size_t m_running = 0;
    // The lane that waits for an answer, and the answer.
    Lane* m_asking = nullptr;
    std::string m_answer;
    bool m_isAnswered = false;
};

}  // namespace krv::cli
