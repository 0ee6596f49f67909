// DocumentControls: which documents have a control, and which of them is active. A document gets
// its control when it first comes to the front, and loses it when it is closed. The host's thread.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "windows/addin/GeneratorBar.h"
#include "windows/addin/HostTraits.h"
#include "windows/addin/SitedControl.h"

namespace krv::windows {

class DocumentControls {
 public:
    // The listener hears of each change of what a control shows.
    DocumentControls(LateBound application, const HostTraits& traits, std::function<void()> onView);

    // Follows the host: the controls of closed documents go, and the active document gets one.
    // Throws Error when the host is busy, or the control doesn't start.
    void Follow();
    // Puts what has changed into the documents: into all, or into this one. Throws the host's
    // Error.
    void Keep();
    void KeepIn(IDispatch* document);
    // What the user should know of what documents keep, since it was last asked for; empty for
    // nothing.
    [[nodiscard]] std::string TakeNotice() { return std::exchange(m_notice, {}); }
    // What the command bar shows for the active document; true when that has changed.
    bool NoteStates(const ButtonStates& states);
    // What it last showed for the document of this window of the host; null when the document has
    // no control.
    [[nodiscard]] const ButtonStates* StatesIn(const LateBound& window) const;
    // The active document's, from the last time that the host was followed; null without one.
    [[nodiscard]] SitedControl* Active() const;

 private:
    struct Entry {
        LateBound document;
        std::unique_ptr<SitedControl> control;
        // The contents that the document keeps, or would keep of a control as it was at first.
        std::vector<std::byte> kept = {};
        // They are no longer the control's.
        bool isDue = false;
        ButtonStates states = {};
    };

    [[nodiscard]] std::shared_ptr<Entry> Find(const LateBound& document) const;
    void DropClosed();
    void PutControl(Entry& entry, HWND window);
    [[nodiscard]] std::optional<MemoryPropertyBag> KeptFor(const LateBound& document);
    static void Keep(Entry& entry);

    LateBound m_application;
    const HostTraits& m_traits;
    std::function<void()> m_onView;
    std::vector<std::shared_ptr<Entry>> m_entries;
    std::shared_ptr<Entry> m_active;
    std::string m_notice;
};

}  // namespace krv::windows
