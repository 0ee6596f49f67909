// OfficeAutomation: what the automation objects of one of the bench's applications share. It leads
// them to the application while that runs; callers may hold objects longer, whose use then throws.
// The user-interface thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

// What the objects ask of the program's window.
class ProgramWindow {
 public:
    virtual ~ProgramWindow() = default;
    [[nodiscard]] virtual HWND Handle() const = 0;
    [[nodiscard]] virtual bool IsShown() const = 0;
    virtual void Show(bool isShown) = 0;
    // While a cell is edited the application refuses all calls.
    [[nodiscard]] virtual bool IsEditing() const = 0;
    virtual void Quit() = 0;
};

class OfficeAutomation {
 public:
    // Application and window outlive the call of End. The name is the source of errors.
    OfficeAutomation(OfficeApplication& office, ProgramWindow& window, const char* programName)
        : m_office(office), m_window(window), m_programName(programName) {}
    OfficeAutomation(const OfficeAutomation&) = delete;
    OfficeAutomation& operator=(const OfficeAutomation&) = delete;
    virtual ~OfficeAutomation() = default;

    // Lets go of the application and of all objects kept here.
    virtual void End() noexcept;

    // Each throws Error 424 after the end.
    [[nodiscard]] OfficeApplication& Office() const;
    [[nodiscard]] ProgramWindow& Window() const;
    [[nodiscard]] bool IsBusy() const { return m_isRunning && m_window.IsEditing(); }
    [[nodiscard]] const char* ProgramName() const { return m_programName; }

    void SetApplicationObject(IDispatch* object) { m_applicationObject = object; }
    // Null after the end.
    [[nodiscard]] IDispatch* ApplicationObject() const { return m_applicationObject.Get(); }

 protected:
    // Throws Error 424 after the end.
    void RequireRunning() const;

 private:
    OfficeApplication& m_office;
    ProgramWindow& m_window;
    const char* m_programName;
    bool m_isRunning = true;
    Microsoft::WRL::ComPtr<IDispatch> m_applicationObject;
};

}  // namespace krv::bench
