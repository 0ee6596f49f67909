// What the benchmarks give the readers: no progress, a real clock, and data to read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "cli/SystemClock.h"
#include "waveform/readers/FileReading.h"

namespace krv::benchmarks {

class NoProgress final : public waveform::PhaseProgress {
 public:
    void ShowMessage(const std::string&) override {}
    void ShowProgress(std::int32_t, std::int32_t) override {}
    bool IsCancelled() override { return false; }
};

// What it takes to read one file of a file system.
class Reading {
 public:
    Reading(ports::FileSystem& files, std::string fileName)
        : File{std::move(fileName), "I-File", "PREFIX"}, Services{files, m_clock, m_progress, {}} {}

 private:
    cli::SystemClock m_clock;
    NoProgress m_progress;

 public:
    waveform::FileToRead File;
    waveform::ReadServices Services;
};

// Random values of -1 to 1 as printf writes them, separated by blanks, lines ended by CR LF.
[[nodiscard]] std::string AsciiText(const char* format, std::size_t values,
                                    std::size_t valuesPerLine);

// Writes a file of random 16-bit samples.
void WriteSamples(const std::string& path, std::size_t points);

}  // namespace krv::benchmarks
