// OfficeApplication: what the bench's applications have alike, without their windows: status bar,
// the command bar that hosts the toolbar control, add-ins. One thread's.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/shared/CommandBarModel.h"

namespace krv::bench {

// The command bar that hosts the toolbar control.
inline constexpr const char* GeneratorBarName = "TQL/KRV Signal Generator";

struct AddInEntry {
    std::string name;
    // Without a separator at the end.
    std::string path;
    bool isInstalled = true;
};

class OfficeApplication {
 public:
    OfficeApplication(const OfficeApplication&) = delete;
    OfficeApplication& operator=(const OfficeApplication&) = delete;
    virtual ~OfficeApplication() = default;

    // What the status bar shows; without a text from outside it is the application's own, "Ready".
    [[nodiscard]] std::string StatusText() const { return m_status.value_or("Ready"); }
    [[nodiscard]] const std::optional<std::string>& GivenStatus() const { return m_status; }
    void SetStatus(std::optional<std::string> text);
    [[nodiscard]] bool IsStatusBarDisplayed() const { return m_isStatusBarDisplayed; }
    void DisplayStatusBar(bool isDisplayed);

    [[nodiscard]] CommandBarModel& GeneratorBar() { return m_generatorBar; }
    [[nodiscard]] std::vector<AddInEntry>& AddIns() { return m_addIns; }

 protected:
    OfficeApplication();

    // For those who show them.
    virtual void OnStatusBarChanged() = 0;
    virtual void OnCommandBarsChanged() = 0;

 private:
    std::optional<std::string> m_status;
    bool m_isStatusBarDisplayed = true;
    CommandBarModel m_generatorBar;
    std::vector<AddInEntry> m_addIns;
};

}  // namespace krv::bench
