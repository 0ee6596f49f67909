// AddInHost: an application of the bench in this process, without its program's window, that loads
// the registered add-in as Excel or Word do. At the end of each test every object of the libraries
// is gone.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <ole2.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/book/windows/BookApplicationObject.h"
#include "bench/document/windows/DocumentApplicationObject.h"
#include "bench/shared/windows/ComAddIns.h"
#include "bench/shared/windows/OfficeObjects.h"
#include "tests/windows/support/AtlContainer.h"
#include "tests/windows/support/RegisteredLibrary.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantValue.h"

namespace krv::tests {

// The windows that show the documents, one of which is active.
class HostWindow final : public bench::ProgramWindow {
 public:
    HostWindow() { Add(); }
    ~HostWindow() override {
        for (const HWND window : m_windows) {
            DestroyWindow(window);
        }
    }
    [[nodiscard]] bool IsEditing() const override { return isEditing; }
    [[nodiscard]] HWND MainHandle() const override { return m_windows.back(); }
    // Another one, which is active from then on until it is closed.
    void Add() {
        m_windows.push_back(CreateWindowExW(0, L"STATIC", L"Office",
                                            WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600, 200,
                                            nullptr, nullptr, nullptr, nullptr));
    }
    void Close() {
        DestroyWindow(m_windows.back());
        m_windows.pop_back();
    }

    bool isEditing = false;

 private:
    std::vector<HWND> m_windows;
};

template <class Model, class ApplicationObject>
class AddInHost : public ::testing::Test {
 protected:
    AddInHost() { OleInitialize(nullptr); }
    ~AddInHost() override {
        m_addIns.reset();
        m_objects.reset();
        OleUninitialize();
    }

    // With one document, as after a start by hand.
    void Start() {
        m_addIns.emplace(m_objects->Automation(),
                         [this](const std::string& problem) { m_reports.push_back(problem); });
        m_addIns->ConnectAtStartup();
        m_model.Add();
        m_addIns->TellStartupComplete();
    }
    void End() { m_addIns->ShutDown(); }

    [[nodiscard]] windows::LateBound Application() const {
        return windows::LateBound(m_objects->Application());
    }
    [[nodiscard]] windows::LateBound Instance() const {
        return Application().CallObject(L"COMAddIns",
                                        {windows::ToVariant(std::string("KRVAddIn.Connect"))});
    }
    // The active document's control; null while there is none.
    [[nodiscard]] windows::LateBound Control() const {
        return Instance().GetObject(L"Object").GetObject(L"Control");
    }
    [[nodiscard]] bool WaitForControl() const {
        return WaitUntil([this] { return static_cast<bool>(Control()); });
    }
    // How many controls lie in the host's window.
    [[nodiscard]] int SitedControls() const {
        int count = 0;
        for (HWND child = nullptr;
             (child = FindWindowExW(m_window.MainHandle(), child, L"KRVAddInControl", nullptr)) !=
             nullptr;) {
            ++count;
        }
        return count;
    }
    // Captions of the enabled buttons, with the others in brackets; hidden ones are left out.
    [[nodiscard]] std::string Bar() const {
        std::string shown;
        const auto& bar = m_model.GeneratorBar();
        for (std::int32_t position = 1; position <= bar.Count(); ++position) {
            const bench::CommandBarButton& button = bar.At(position);
            if (button.isVisible) {
                shown += (shown.empty() ? "" : ", ") +
                         (button.isEnabled ? button.caption : "(" + button.caption + ")");
            }
        }
        return shown;
    }
    void Click(const char* caption) {
        auto& bar = m_model.GeneratorBar();
        EXPECT_TRUE(bar.Click(bar.PositionOf(caption))) << caption;
    }

    static constexpr const char* Unconnected =
        "Corvane TQL/KRV, Connect, (Settings), (PutData), (GetImage), Help";
    static constexpr const char* Connected =
        "Corvane TQL/KRV, Connected, Settings, PutData, GetImage, Help";

    const RegisteredLibrary m_control{TestedLibrary::Control()};
    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
    const RegisteredLibrary m_addIn{TestedLibrary::AddIn()};
    Model m_model;
    HostWindow m_window;
    std::optional<bench::OfficeObjects<ApplicationObject>> m_objects{std::in_place, m_model,
                                                                     m_window};
    std::optional<bench::ComAddIns> m_addIns;
    std::vector<std::string> m_reports;
};

using AddInInExcel = AddInHost<bench::BookApplication, bench::BookApplicationObject>;
using AddInInWord = AddInHost<bench::DocumentApplication, bench::DocumentApplicationObject>;

}  // namespace krv::tests
