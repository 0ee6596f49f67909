// frmCallback: the modal progress dialog inside which the long work of a download runs.
//
// The caller sets a callback number and itself as CallbackOwner and shows the dialog modally; the
// dialog, once activated, calls the owner's work, hides itself when the work returns, and so ends
// the modal show. Cancelling is cooperative: the Cancel button raises a flag that TestCancelFlag
// returns.
//
// Rows are numbered from 1 and have controls for two; the link tables have room for eleven.
// Arguments that an operation adjusts are taken by reference, as the classic language does: a
// caller's variable holds the adjusted number afterwards (the row number less one; minimum, maximum
// and value in order). Overloads for constants leave the caller's numbers alone.
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

    // Each throws Error 340 for a row without controls and 6 for row -32768.
    void SetWaitMessage(std::int16_t& row, const std::string& message);
    void ClearWaitMessage(std::int16_t& row);
    void HideProgressBar(std::int16_t& row, const std::string& text);

    // Each throws Error 9 for a row outside 1 to 11 and 6 for row -32768.
    void LinkProgressBars(std::int16_t& row, std::int32_t low, std::int32_t high);
    void UnlinkProgressBars(std::int16_t& row);

    // Never reports an error: what was set before it stays set.
    void SetProgressBar(std::int16_t& row, std::int32_t& minimum, std::int32_t& maximum,
                        std::int32_t& value);

    // The same for callers that pass a constant or temporary row; nothing of theirs is adjusted.
    void SetWaitMessage(std::int16_t&& row, const std::string& message) {
        SetWaitMessage(row, message);
    }
    void ClearWaitMessage(std::int16_t&& row) { ClearWaitMessage(row); }
    void HideProgressBar(std::int16_t&& row, const std::string& text) {
        HideProgressBar(row, text);
    }
    void LinkProgressBars(std::int16_t&& row, std::int32_t low, std::int32_t high) {
        LinkProgressBars(row, low, high);
    }
    void UnlinkProgressBars(std::int16_t&& row) { UnlinkProgressBars(row); }
    void SetProgressBar(std::int16_t&& row, std::int32_t minimum, std::int32_t maximum,
                        std::int32_t value) {
        SetProgressBar(row, minimum, maximum, value);
    }

    // Lets pending events through, so that a click on Cancel is delivered, then returns the flag.
    [[nodiscard]] bool TestCancelFlag();
    // The same for loops over data, at the price that their work allows.
    [[nodiscard]] bool TestCancelFlagInLoop();
    // As the Cancel button does.
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
