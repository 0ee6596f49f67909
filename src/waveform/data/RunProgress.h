// RunProgress: the two rows of the progress dialog during a run. The upper one shows the whole run,
// the lower one the phase; while a phase is linked, its progress also moves the upper bar through
// the phase's share.
#pragma once

#include <cstdint>
#include <string>

#include "common/progress/ProgressLink.h"
#include "common/progress/frmCallback.h"

namespace krv::waveform {

// The phase's row, for work that knows of no other. Called on the user-interface thread.
class PhaseProgress {
 public:
    virtual ~PhaseProgress() = default;
    virtual void ShowMessage(const std::string& text) = 0;
    // Of `maximum` units of work, `value` are done.
    virtual void ShowProgress(std::int32_t maximum, std::int32_t value) = 0;
    // Whether the user has cancelled, for loops over data; lets pending events through first, at
    // the price that the work allows.
    virtual bool IsCancelled() = 0;
};

class RunProgress final : public PhaseProgress {
 public:
    // The places on the upper bar where the phases begin and end.
    static constexpr std::int32_t ReadingStart = 100;
    static constexpr std::int32_t CheckingStart = 500;
    static constexpr std::int32_t ValidationEnd = 600;
    static constexpr std::int32_t DownloadEnd = 1000;

    // The dialog outlives this.
    explicit RunProgress(progress::frmCallback& dialog) noexcept : m_dialog(dialog) {}

    // --- the whole run --------------------------------------------------------------------------
    // The upper bar ends at DownloadEnd for a download and at ValidationEnd for any other run.
    void Begin(const std::string& caption, bool download);
    void ShowOverall(std::int32_t place);
    void ClearOverall();

    // --- the phase ------------------------------------------------------------------------------
    void ShowMessage(const std::string& text) override;
    void ShowProgress(std::int32_t maximum, std::int32_t value) override;
    // Text in place of the bar, for work that can't be cancelled; until the row is cleared.
    void ReplaceBar(const std::string& text);
    void ClearPhase();

    // Links that last as long as the result. Sources share the reading phase in equal slices;
    // `position` counts them from 0.
    [[nodiscard]] progress::ProgressLink LinkSource(std::int32_t position, std::int32_t sources);
    [[nodiscard]] progress::ProgressLink LinkChecks();

    // Between steps; lets pending events through first.
    [[nodiscard]] bool TestCancelFlag() { return m_dialog.TestCancelFlag(); }
    [[nodiscard]] bool IsCancelled() override { return m_dialog.TestCancelFlagInLoop(); }

 private:
    progress::frmCallback& m_dialog;
    std::int32_t m_overallMax = DownloadEnd;
};

}  // namespace krv::waveform
