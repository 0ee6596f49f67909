#include "benchmarks/PeakMemory.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace krv::benchmarks {
namespace {

// A line "VmHWM:    1234 kB" of the process's status.
std::int64_t StatusBytes(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key + ':')) {
            return std::stoll(line.substr(key.size() + 1)) * 1024;
        }
    }
    throw std::runtime_error("the system doesn't tell " + key);
}

// The peak starts again at what is resident now.
void ResetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

std::int64_t MeasureHere(const std::function<void(const PeakStart&)>& work) {
    std::int64_t before = -1;
    work([&before] {
        ResetPeak();
        before = StatusBytes("VmRSS");
    });
    if (before < 0) {
        throw std::runtime_error("the work has no start");
    }
    return StatusBytes("VmHWM") - before;
}

[[noreturn]] void RunChild(int channel, const std::function<void(const PeakStart&)>& work) {
    int exitCode = EXIT_FAILURE;
    try {
        const std::int64_t growth = MeasureHere(work);
        const auto written = write(channel, &growth, sizeof growth);
        exitCode = written == static_cast<ssize_t>(sizeof growth) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception&) {
        // The parent learns of it from the exit code.
    }
    _exit(exitCode);
}

}  // namespace

std::int64_t PeakGrowth(const std::function<void(const PeakStart& start)>& work) {
    int channel[2];
    if (pipe(channel) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        RunChild(channel[1], work);
    }
    close(channel[1]);
    std::int64_t growth = 0;
    const auto received = read(channel[0], &growth, sizeof growth);
    close(channel[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0 ||
        received != static_cast<ssize_t>(sizeof growth)) {
        throw std::runtime_error("the measured work failed");
    }
    return growth;
}

}  // namespace krv::benchmarks
