// Downloads without an end, in one process: models, sources, ways and faults take turns. Memory and
// descriptors must not grow.
//
// KRV_ENDURANCE=1000 in the environment makes it so many downloads.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "suite/scpi/SupportedModels.h"
#include "tests/support/DownloadRig.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {

using namespace waveform;
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int ShortRun = 84;
// What allocators keep and give back makes the process breathe by about so much.
constexpr double MemorySlackMb = 4;

struct Use {
    std::size_t descriptors = 0;
    double memoryMb = 0;
};

// Nothing where the system has no file for it. Under Wine these files can be read, too, but count
// what Wine itself opens as it goes.
std::optional<Use> ProcessUse() {
#ifdef _WIN32
    return std::nullopt;
#else
    std::ifstream status("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    if (!(status >> total >> resident)) {
        return std::nullopt;
    }
    status.close();
    Use use;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator("/proc/self/fd")) {
        ++use.descriptors;
    }
    use.memoryMb = static_cast<double>(resident) * 4096 / (1 << 20);
    return use;
#endif
}

// The sanitizer keeps what is freed for a while, which looks like growth. Clang tells of it in
// another way than GCC.
#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define KRV_FREED_MEMORY_IS_KEPT
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define KRV_FREED_MEMORY_IS_KEPT
#endif
constexpr bool MemoryIsTold =
#ifdef KRV_FREED_MEMORY_IS_KEPT
    false;
#else
    true;
#endif

// What comes of each is in the matrix of faults.
constexpr std::array<const char*, 7> SwitchedFaults{
    "", "disconnect=300", "never-answer", "memory-full", "error=-222,Too loud",
    "", "truncate-reply"};

class Endurance : public ::testing::Test {
 protected:
    Endurance() {
        for (const std::string_view model : suite::SupportedModels) {
            auto& generator = m_generators.emplace_back(std::make_shared<simulator::Generator>(
                simulator::GeneratorSettings{.model = std::string(model)}));
            m_running.push_back(std::make_unique<RunningGenerator>(generator));
        }
        auto& files = rig.desktop.Files;
        const auto repeated = [](const std::string& two) {
            std::string text;
            for (int pair = 0; pair < 256; ++pair) {
                text += two;
            }
            return text;
        };
        files.Put("i.txt", repeated("0.5\r\n-0.25\r\n"));
        files.Put("m.txt", repeated("1\r\n0\r\n"));
        files.Put("le.bin", BinarySamples(1024, false));
        files.Put("be.bin", BinarySamples(1024, true));
        rig.excel->PutColumn(1, std::vector<double>(512, -1));
        rig.excel->PutColumn(2, std::vector<double>(512, 1));
    }

    void ChooseSource(int turn) {
        const auto text = [&](const char* q, const char* markers) {
            rig.ChooseFiles(WaveformTypeIndex::Scalable, FileTypeIndex::Ascii, "i.txt", q, markers);
        };
        const auto binary = [&](int type, const char* i, const char* q) {
            rig.ChooseFiles(WaveformTypeIndex::Internal14, type, i, q, "");
        };
        const std::array<std::function<void()>, 5> sources{
            [&] { text("i.txt", "m.txt"); },
            [&] { binary(FileTypeIndex::LittleEndian, "le.bin", ""); },
            [&] { rig.ChooseRanges(WaveformTypeIndex::Scalable, "A1:A512", "B1:B512"); },
            [&] { binary(FileTypeIndex::BigEndian, "be.bin", "be.bin"); }, [&] { text("", ""); }};
        sources.at(static_cast<std::size_t>(turn) % sources.size())();
    }

    void Turn(int turn) {
        SCOPED_TRACE("turn " + std::to_string(turn));
        const std::size_t model = static_cast<std::size_t>(turn) % m_generators.size();
        const std::string fault =
            SwitchedFaults.at(static_cast<std::size_t>(turn) % SwitchedFaults.size());
        const bool takesTimeOut = fault == "never-answer" || fault == "truncate-reply";
        simulator::Generator& generator = *m_generators[model];
        // A source whose file has changed is read again; the others stay loaded.
        ++rig.desktop.Files.Entries["i.txt"].date;
        ChooseSource(turn);
        rig.Name("W" + std::to_string(turn % 3));
        rig.Connect(m_running[model]->Address(), {seconds(20), seconds(20)});
        if (takesTimeOut) {
            rig.SetTimeOuts({seconds(20), milliseconds(100)});
        }
        if (!fault.empty()) {
            generator.ActiveFaults().Switch(fault);
        }
        const std::string shown = rig.Download();
        EXPECT_EQ(shown.ends_with("Download complete.\n"), fault.empty()) << shown;
        EXPECT_EQ(rig.Obstacles(), "");
        generator.ActiveFaults().Clear();
        rig.ForgetWhatWasSeen();
    }

    DownloadRig rig;

 private:
    std::vector<std::shared_ptr<simulator::Generator>> m_generators;
    std::vector<std::unique_ptr<RunningGenerator>> m_running;
};

TEST_F(Endurance, ManyDownloadsLeaveNothingBehind) {
    const char* const wish = std::getenv("KRV_ENDURANCE");
    const int turns = wish != nullptr ? std::atoi(wish) : ShortRun;
    const auto start = std::chrono::steady_clock::now();
    const auto unused = ProcessUse();
    std::optional<Use> half;
    for (int turn = 0; turn < turns; ++turn) {
        if (turn == turns / 2) {
            half = ProcessUse();
        }
        Turn(turn);
        if (HasFailure()) {
            return;
        }
    }
    if (!unused || !half) {
        return;
    }
    rig.Disconnect();
    auto after = ProcessUse();
    // The generators close their sides when they find time to.
    for (int wait = 0; wait < 1000 && after->descriptors > unused->descriptors; ++wait) {
        std::this_thread::sleep_for(milliseconds(10));
        after = ProcessUse();
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::cout << turns << " downloads in " << took.count() << " s; descriptors before "
              << unused->descriptors << ", after " << after->descriptors << "; memory half-way "
              << half->memoryMb << " MB, at the end " << after->memoryMb << " MB\n";
    EXPECT_EQ(after->descriptors, unused->descriptors);
    if (MemoryIsTold) {
        EXPECT_LE(after->memoryMb, half->memoryMb + MemorySlackMb);
    }
}

}  // namespace
}  // namespace krv::tests
