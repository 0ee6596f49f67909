// BenchVisaLibrary: the VISA library for tests, over a generator that runs as long as the object
// lives. See tests/visa/BenchVisa.h for its faults.
#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/EnvironmentVariable.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

class BenchVisaLibrary {
 public:
    // Tests run in the folder that they are built in.
    [[nodiscard]] static std::string File() {
#ifdef _WIN32
        constexpr const char* Name = "krv_bench_visa.dll";
#else
        constexpr const char* Name = "krv_bench_visa.so";
#endif
        return (std::filesystem::current_path() / Name).string();
    }

    [[nodiscard]] simulator::Generator& Device() const {
        return m_generator.Device();
    }
    void SetFaults(const std::string& faults) {
        m_faults.Set(faults);
    }
    // What the library did since this was asked last.
    std::vector<std::string> TakeTrace() const {
        std::istringstream text(m_folder.Content("trace"));
        std::filesystem::remove(m_folder.At("trace"));
        std::vector<std::string> events;
        for (std::string event; std::getline(text, event);) {
            events.push_back(event);
        }
        return events;
    }

 private:
    RunningGenerator m_generator;
    TemporaryFolder m_folder;
    EnvironmentVariable m_port{"KRV_BENCH_VISA_PORT", std::to_string(m_generator.Port())};
    EnvironmentVariable m_faults{"KRV_BENCH_VISA_FAULTS", ""};
    EnvironmentVariable m_trace{"KRV_BENCH_VISA_TRACE", m_folder.PathOf("trace")};
};

}  // namespace krv::tests
