// CommandLineFixture: command lines run in process, in a folder of their own, with streams that the
// test reads and a Ctrl-C that it presses.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <mutex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/CommandLine.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

class FakeInterruptions final : public cli::Interruptions {
 public:
    std::string Warnings;
    // The exit codes that the program would have ended with at once.
    std::vector<int> Ended;

    // On any thread.
    void Press() {
        const std::lock_guard lock(m_mutex);
        if (m_callback != nullptr) {
            m_callback(m_context);
        }
    }

    void Watch(Callback callback, void* context) override {
        const std::lock_guard lock(m_mutex);
        m_context = context;
        m_callback = callback;
    }
    void StopWatching() override {
        const std::lock_guard lock(m_mutex);
        m_callback = nullptr;
    }
    void Warn(const char* text) noexcept override { Warnings += text; }
    void EndProgram(int exitCode) noexcept override { Ended.push_back(exitCode); }

 private:
    std::mutex m_mutex;
    Callback m_callback = nullptr;
    void* m_context = nullptr;
};

// A terminal that passes what is written to it to a function that may act on it.
class WatchedTerminal final : public std::stringbuf {
 public:
    std::function<void(const std::string& written)> OnText;

 protected:
    int sync() override {
        if (OnText) {
            OnText(str());
        }
        return 0;
    }
};

class CommandLineTest : public ::testing::Test {
 protected:
    // Runs "krv ..." with `input` typed at a terminal, or without a terminal.
    int Run(const std::vector<std::string>& arguments);
    int RunAtTerminal(const std::vector<std::string>& arguments, const std::string& input);

    // Of the test's folder.
    std::string File(const std::string& name, std::string_view content) const {
        return m_folder.Write(name, content);
    }
    [[nodiscard]] std::string Path(const std::string& name) const { return m_folder.PathOf(name); }
    [[nodiscard]] std::string Content(const std::string& name) const {
        return m_folder.Content(name);
    }
    [[nodiscard]] bool Exists(const std::string& name) const { return m_folder.Has(name); }

    // The codes in a file of little-endian 16-bit numbers.
    [[nodiscard]] std::vector<int> Codes(const std::string& name) const;

    // What the last run wrote.
    std::string Out;
    std::string Err;
    std::string Progress;
    FakeInterruptions CtrlC;
    // Of the console of the next run.
    int ProgressIntervalMs = 5000;
    NumberFormat UsersNumbers;
    cli::Environment Surroundings;
    bool HasColors = false;
    // Called with everything drawn so far whenever a progress line changes.
    std::function<void(const std::string& drawn)> OnProgress;

 private:
    int Run(const std::vector<std::string>& arguments, const std::string& input, bool atTerminal);

    TemporaryFolder m_folder;
};

// The text of the file, or of a shipped file by its path in the project.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path ProjectFile(const std::string& name);

// Text in lines "1\n2\n...": a ramp of so many values.
[[nodiscard]] std::string Ramp(int count);
// Numbers as 16-bit samples.
[[nodiscard]] std::string LittleEndian(const std::vector<int>& codes);

}  // namespace krv::tests
