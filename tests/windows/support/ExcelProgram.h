// ExcelProgram: a program that answers as Excel does, in this process: krvbook's model and
// automation objects, with a window that only owns dialogs.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <wrl/client.h>

#include <string>

#include "bench/book/windows/BookApplicationObject.h"
#include "bench/shared/windows/OfficeObjects.h"

namespace krv::tests {

class ExcelProgram final {
 public:
    // With one workbook, and the command bar.
    ExcelProgram() {
        m_model.AddGeneratorBar();
        m_model.Add();
    }
    ExcelProgram(const ExcelProgram&) = delete;
    ExcelProgram& operator=(const ExcelProgram&) = delete;
    ~ExcelProgram() { DestroyWindow(m_window); }

    [[nodiscard]] HWND Handle() const { return m_window; }
    [[nodiscard]] IDispatch* Application() const { return m_objects.Application(); }
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> Document() const {
        return m_objects.Automation().ObjectOf(m_model.Active());
    }
    // "enabled" or "disabled" and the tool tip of a button; "hidden" when it is.
    [[nodiscard]] std::string Button(const char* caption) {
        const auto& button = m_model.GeneratorBar().At(m_model.GeneratorBar().PositionOf(caption));
        return button.isVisible ? (button.isEnabled ? "enabled " : "disabled ") + button.tooltipText
                                : "hidden";
    }

 private:
    HWND m_window = CreateWindowExW(0, L"STATIC", L"Office", WS_OVERLAPPEDWINDOW, 0, 0, 600, 200,
                                    nullptr, nullptr, nullptr, nullptr);
    bench::BookApplication m_model;
    bench::ProgramWindow m_noEditing;
    bench::OfficeObjects<bench::BookApplicationObject> m_objects{m_model, m_noEditing};
};

}  // namespace krv::tests
