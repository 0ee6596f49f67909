// WorkbookUser: a user at krvbook with the registered control, suite and add-in, and a generator
// over TCP. The user is another process than the windows; what a test does, a hand could do. At the
// end the workbook closes, and its program ends without a fault.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "bench/session/windows/UserDesktop.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/BenchProgram.h"
#include "tests/windows/support/RegisteredLibrary.h"

namespace krv::tests {

using Wave = std::vector<double>;
using Codes = std::vector<std::int16_t>;

class WorkbookUser : public ::testing::Test {
 protected:
    static constexpr const char* ConnectCaption = " Connect To TQL/KRV Signal Generator";
    static constexpr const char* DownloadCaption = "Download Waveform to KRV";
    static constexpr const char* Complete = "Download complete.";

    WorkbookUser() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~WorkbookUser() override { CoUninitialize(); }

    void TearDown() override {
        if (m_program) {
            Book().Close();
            EXPECT_EQ(m_program->ExitCode(), 0U);
        }
    }

    // A workbook with a column for each channel, from row 1, in the file's folder.
    void OpenBook(const std::vector<Wave>& columns, const std::wstring& options = {}) {
        std::ofstream file(m_folder.Path() / "wave.csv");
        file.precision(17);
        for (std::size_t row = 0; row < columns.front().size(); ++row) {
            for (std::size_t column = 0; column < columns.size(); ++column) {
                file << (column > 0 ? "," : "") << columns[column][row];
            }
            file << '\n';
        }
        file.close();
        m_program.emplace(
            L"krvbook.exe", L"KrvBook",
            L"\"" + PathOf("wave.csv").wstring() + L"\" --screenshot-ready" + options);
    }

    void StartGenerator(const std::string& model, std::vector<std::string> faults = {},
                        std::uint16_t port = 0) {
        simulator::GeneratorSettings settings;
        settings.model = model;
        settings.faults = std::move(faults);
        settings.storeFolder = PathOf("store");
        m_model = model;
        m_generator.emplace(settings, port);
    }

    // Through the connect dialog, with the generator's address typed in.
    void Connect() {
        Book().Part(Book().HasPart("Connected") ? "Connected" : "Connect").Click();
        const bench::UserWindow dialog = bench::WindowOf(ConnectCaption, Process());
        dialog.Part("Edit").Type(m_generator->Address());
        dialog.Part("Connect").Click();
        dialog.Part("Connected to " + m_model + " at " + m_generator->Address() + ".");
        dialog.Part("Close").Click();
        dialog.ExpectGone();
    }

    // The download dialog, opened with the toolbar's button.
    bench::UserWindow OpenDownload() {
        Book().Part("PutData").Click();
        return Download();
    }
    // Opened, with the cells of two columns as its source.
    bench::UserWindow OpenDownloadOfCells(const std::string& iRange, const std::string& qRange) {
        const bench::UserWindow dialog = OpenDownload();
        dialog.Part("optSpreadsheet").Click();
        dialog.Part("textIRange").Type(iRange);
        dialog.Part("textQRange").Type(qRange);
        return dialog;
    }
    void DownloadAs(const bench::UserWindow& dialog, const std::string& name) {
        dialog.Part("checkAutoName").Tick(false);
        dialog.Part("TextDestinationName").Type(name);
        dialog.Part("cmdDownload").Click();
    }

    [[nodiscard]] bench::UserWindow Book() const {
        return bench::WindowOf("wave.csv - krvbook", Process());
    }
    [[nodiscard]] bench::UserWindow Download() const {
        return bench::WindowOf(DownloadCaption, Process());
    }
    // The whole text of the message box that contains this, after OK.
    std::string Confirm(const std::string& text) const {
        return bench::Answer(text, "OK", Process());
    }
    [[nodiscard]] DWORD Process() const { return m_program->Process(); }
    [[nodiscard]] std::filesystem::path PathOf(const std::string& name) const {
        return m_folder.Path() / name;
    }
    [[nodiscard]] std::string Content(const std::string& name) const {
        return m_folder.Content(name);
    }
    // What the generator stored under NAME.KIND.
    [[nodiscard]] Codes Stored(const std::string& name, const std::string& kind) const {
        const std::string bytes = Content("store/" + name + "." + kind + ".int16");
        Codes codes(bytes.size() / sizeof(std::int16_t));
        std::memcpy(codes.data(), bytes.data(), codes.size() * sizeof(std::int16_t));
        return codes;
    }

    std::optional<BenchProgram> m_program;
    std::optional<RunningGenerator> m_generator;

 private:
    const RegisteredLibrary m_control{TestedLibrary::Control()};
    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
    const RegisteredLibrary m_addIn{TestedLibrary::AddIn()};
    TemporaryFolder m_folder;
    std::string m_model;
};

}  // namespace krv::tests
