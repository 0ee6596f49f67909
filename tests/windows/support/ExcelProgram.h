// ExcelProgram: a program that answers as Excel does, in this process: krvbook's model and
// automation objects, with a window that only owns dialogs.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <wrl/client.h>

#include <memory>
#include <string>

#include "bench/book/windows/ApplicationObject.h"

namespace krv::tests {

class ExcelProgram final : public bench::ProgramWindow {
 public:
    // With one workbook.
    ExcelProgram() {
        m_automation->SetApplicationObject(Application());
        m_model.Add();
    }
    ExcelProgram(const ExcelProgram&) = delete;
    ExcelProgram& operator=(const ExcelProgram&) = delete;
    ~ExcelProgram() override {
        m_object->End();
        m_automation->End();
        DestroyWindow(m_window);
    }

    [[nodiscard]] HWND Handle() const override { return m_window; }
    [[nodiscard]] IDispatch* Application() const { return m_object.Get(); }
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> Document() const {
        return m_automation->ObjectOf(m_model.ActiveBook());
    }
    // "enabled" or "disabled" and the tool tip of a button; "hidden" when it is.
    [[nodiscard]] std::string Button(const char* caption) {
        const auto& button = m_model.GeneratorBar().At(m_model.GeneratorBar().PositionOf(caption));
        return button.isVisible ? (button.isEnabled ? "enabled " : "disabled ") + button.tooltipText
                                : "hidden";
    }

 private:
    [[nodiscard]] bool IsShown() const override { return true; }
    void Show(bool) override {}
    [[nodiscard]] bool IsEditing() const override { return false; }
    void Quit() override {}

    HWND m_window = CreateWindowExW(0, L"STATIC", L"Office", WS_OVERLAPPEDWINDOW, 0, 0, 600, 200,
                                    nullptr, nullptr, nullptr, nullptr);
    bench::BookApplication m_model;
    std::shared_ptr<bench::BookAutomation> m_automation =
        std::make_shared<bench::BookAutomation>(m_model, *this);
    Microsoft::WRL::ComPtr<bench::ApplicationObject> m_object =
        windows::MakeCom<bench::ApplicationObject>(m_automation);
};

}  // namespace krv::tests
