// What tells Excel from Word for the add-in: the names of their members, and the events that it
// follows.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

#include <span>

#include "common/Error.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

struct HostTraits {
    const char* name;
    // The collection of open documents, and the active one.
    const wchar_t* documents;
    const wchar_t* activeDocument;
    // The document of a window.
    const wchar_t* windowDocument;
    // The class of the main windows.
    const wchar_t* windowClass;
    IID events;
    // The events before a document is closed, if it is, and saved, and those after which the active
    // document may be another.
    DISPID beforeClose;
    DISPID beforeSave;
    std::span<const DISPID> changes;
    // Documents hold sheets, and controls lie on these.
    bool hasSheets;
    // The host's adapter hears of no activations: it is told.
    bool needsActivation;
    // Command bars are kept in a template, which counts as changed by them.
    bool hasBarTemplate;
};

// Throws Error for an application of another kind.
[[nodiscard]] const HostTraits& TraitsOf(IDispatch* application);

// Null when no document is open, and for what can't be edited.
[[nodiscard]] LateBound ActiveDocumentOf(const LateBound& application, const HostTraits& traits);
// The main window that shows the active document; null when it can't be told.
[[nodiscard]] HWND ActiveWindowOf(const LateBound& application, const HostTraits& traits);

// A failure of a call to the host which says that it is busy: a cell is edited, or a dialog is
// open.
[[nodiscard]] bool IsBusy(const Error& error);
// One that may mean the same, or anything else.
[[nodiscard]] bool MayBeBusy(const Error& error);

}  // namespace krv::windows
