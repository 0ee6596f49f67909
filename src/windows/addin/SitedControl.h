// SitedControl: the toolbar control of one document, in a hidden child of the window that shows the
// document, so that its dialogs belong to that window. The host's thread.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>

#include "common/MemoryPropertyBag.h"
#include "windows/addin/Commands.h"
#include "windows/addin/HostTraits.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WindowClass.h"
#include "windows/container/ControlContainer.h"

namespace krv::windows {

class SitedControl : public WindowClass<SitedControl> {
 public:
    struct Place {
        LateBound application;
        const HostTraits& traits;
        LateBound document;
        // The window that shows the document; null where there is none.
        HWND window;
    };

    // The control comes from what the document keeps, or is a new one for null. The listener hears
    // of each change of what it shows. Throws Error when the control doesn't start.
    SitedControl(const Place& place, PropertyBag* saved, std::function<void()> onView);
    SitedControl(const SitedControl&) = delete;
    SitedControl& operator=(const SitedControl&) = delete;
    ~SitedControl();

    // False once the window that it was in is gone, and the control with it.
    [[nodiscard]] bool IsThere() const { return m_container != nullptr; }
    // What the control wants its document to keep, and whether that has changed since it was last
    // asked for. Save throws Error when the control can't be saved.
    [[nodiscard]] bool IsDirty() const { return m_container && m_container->IsDirty(); }
    [[nodiscard]] MemoryPropertyBag Save() const;
    // What the control wanted to keep when its window went; nothing before.
    [[nodiscard]] std::optional<MemoryPropertyBag>& Last() { return m_last; }
    // Into another window that shows the document.
    void MoveTo(HWND window);
    [[nodiscard]] LateBound Control() const;
    // Throws the command's Error, and one that says so when the control has gone.
    void Run(const Command& command) const;
    // The host can't tell the control of its document's activation itself.
    void TellActive() const;

 private:
    friend WindowClass<SitedControl>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);

    std::unique_ptr<ControlContainer> m_container;
    std::optional<MemoryPropertyBag> m_last;
};

}  // namespace krv::windows
