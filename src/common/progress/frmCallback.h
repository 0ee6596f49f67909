// frmCallback: the modal progress dialog inside which the long work of a download runs.
//
// The caller sets a callback number and itself as CallbackOwner and shows the dialog modally; the
// dialog, once activated, calls the owner's work, hides itself when the work returns, and so ends
// the modal show. Cancelling is cooperative: the Cancel button raises a flag that TestCancelFlag
// returns.
//
// Rows are numbered from 1. There are controls for two rows; the link tables have room for eleven.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "common/forms/ControlArray.h"
#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "ports/desktop/EventPump.h"

namespace krv::progress {

// The caller whose work runs while the progress dialog is active.
class CallbackWork {
 public:
    virtual ~CallbackWork() = default;
    virtual void RunDownload() = 0;
};

class frmCallback final : public forms::Form {
 public:
    static constexpr int LinkRows = 11;

    frmCallback(ports::FormScreen& screen, ports::EventPump& events);

    // Set by the caller before showing and cleared after.
    CallbackWork* CallbackOwner = nullptr;

    forms::ControlArray<forms::Label> Label1;
    forms::ControlArray<forms::ProgressBar> ProgressBar1;
    forms::ControlArray<forms::TextBox> TextProgress;
    forms::CommandButton CommandCancel;

    void SetFormCaption(const std::string& caption);
    // 1 runs the owner's RunDownload, 0 nothing.
    void SetCallbackID(std::int16_t id);

    // The next three throw Error 340 for a row without controls and 6 for row -32768.

    // Sets the row's label. Shows a hidden dialog modeless.
    void SetWaitMessage(std::int16_t row, const std::string& message);
    // Empties the row's label, hides its bar and its text line and enables Cancel.
    void ClearWaitMessage(std::int16_t row);
    // Shows a text in the place of the row's bar and disables Cancel.
    void HideProgressBar(std::int16_t row, const std::string& text);

    // Both throw Error 9 for a row outside 1 to 11 and 6 for row -32768.

    // From its next SetProgressBar on, the row moves the row above it: from `low` at the row's
    // minimum to `high` at its maximum.
    void LinkProgressBars(std::int16_t row, std::int32_t low, std::int32_t high);
    void UnlinkProgressBars(std::int16_t row);

    // Sets the range and the value of the row's bar and shows the bar. A maximum that isn't above
    // the minimum counts as the minimum plus 1; a value outside the range counts as its nearer end.
    // Never reports an error: what was set before it stays set.
    void SetProgressBar(std::int16_t row, std::int32_t minimum, std::int32_t maximum,
                        std::int32_t value);

    // Lets pending events through, so that a click on Cancel is delivered, then returns the flag.
    [[nodiscard]] bool TestCancelFlag();
    // The same for loops over data, at the price that their work allows.
    [[nodiscard]] bool TestCancelFlagInLoop();
    // The same as a click on Cancel.
    void RequestCancel();

 protected:
    void OnActivate() override;
    // Closing the window asks the work to end, as Cancel does; the work runs to its end. Where
    // Cancel is disabled closing does nothing. Without work the dialog is hidden.
    void OnQueryClose() override;

 private:
    void PlaceRow(int row);
    void AdvanceRowAbove(std::int16_t index, std::int32_t minimum, std::int32_t maximum,
                         std::int32_t value);
    void RunCallback();
    void EndActivation();

    ports::EventPump& m_events;
    std::int16_t m_callbackID = 0;
    bool m_cancelFlag = false;
    // True while the callback runs: a window that is activated again must not start it again.
    bool m_activating = false;
    std::array<bool, LinkRows> m_linked{};
    // The slice of the row above that a linked row fills.
    std::array<std::int32_t, LinkRows> m_linkLow{};
    std::array<std::int32_t, LinkRows> m_linkHigh{};
};

}  // namespace krv::progress
