#include "benchmarks/Machine.h"

#include <ctime>
#include <fstream>
#include <ostream>
#include <string>
#include <thread>

namespace krv::benchmarks {
namespace {

std::string FirstLine(const char* path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

// What follows the colon in the first line that starts with the key.
std::string Field(const char* path, const std::string& key) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(key)) {
            const auto value = line.find_first_not_of(" \t", line.find(':') + 1);
            return value == std::string::npos ? "" : line.substr(value);
        }
    }
    return "unknown";
}

std::string Today() {
    const std::time_t now = std::time(nullptr);
    char text[16];
    std::strftime(text, sizeof text, "%Y-%m-%d", std::gmtime(&now));
    return text;
}

}  // namespace

void DescribeMachine(std::ostream& out) {
    out << "- Date: " << Today() << '\n'
        << "- Processor: " << std::thread::hardware_concurrency() << " cores of "
        << Field("/proc/cpuinfo", "model name") << " (family "
        << Field("/proc/cpuinfo", "cpu family") << ", model " << Field("/proc/cpuinfo", "model\t")
        << "), " << Field("/proc/cpuinfo", "cpu MHz") << " MHz, cache "
        << Field("/proc/cpuinfo", "cache size") << '\n'
        << "- Memory: " << Field("/proc/meminfo", "MemTotal") << ", large pages "
        << FirstLine("/sys/kernel/mm/transparent_hugepage/enabled") << '\n'
        << "- System: " << FirstLine("/proc/sys/kernel/ostype") << ' '
        << FirstLine("/proc/sys/kernel/osrelease") << '\n'
        << "- Compiler: g++ " << __VERSION__ << '\n'
        << "- Load of the machine at that moment (1, 5, 15 minutes): "
        << FirstLine("/proc/loadavg").substr(0, 14) << '\n';
}

}  // namespace krv::benchmarks
