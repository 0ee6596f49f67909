#include "waveform/data/RunProgress.h"

namespace krv::waveform {
namespace {

constexpr std::int16_t OverallRow = 1;
constexpr std::int16_t PhaseRow = 2;

}  // namespace

void RunProgress::Begin(const std::string& caption, bool download) {
    m_overallMax = download ? DownloadEnd : ValidationEnd;
    m_dialog.SetFormCaption(caption);
    m_dialog.SetWaitMessage(std::int16_t{OverallRow}, "Overall progress...");
    ShowOverall(0);
}

void RunProgress::ShowOverall(std::int32_t place) {
    m_dialog.SetProgressBar(std::int16_t{OverallRow}, 0, m_overallMax, place);
}

void RunProgress::ClearOverall() {
    m_dialog.ClearWaitMessage(std::int16_t{OverallRow});
}

void RunProgress::ShowMessage(const std::string& text) {
    m_dialog.SetWaitMessage(std::int16_t{PhaseRow}, text);
}

void RunProgress::ShowProgress(std::int32_t maximum, std::int32_t value) {
    m_dialog.SetProgressBar(std::int16_t{PhaseRow}, 0, maximum, value);
}

void RunProgress::ReplaceBar(const std::string& text) {
    m_dialog.HideProgressBar(std::int16_t{PhaseRow}, text);
}

void RunProgress::ClearPhase() {
    m_dialog.ClearWaitMessage(std::int16_t{PhaseRow});
}

progress::ProgressLink RunProgress::LinkSource(std::int32_t position, std::int32_t sources) {
    const auto border = [sources](std::int32_t at) {
        return ReadingStart + (CheckingStart - ReadingStart) * at / sources;
    };
    return {m_dialog, PhaseRow, border(position), border(position + 1)};
}

progress::ProgressLink RunProgress::LinkChecks() {
    return {m_dialog, PhaseRow, CheckingStart, ValidationEnd};
}

}  // namespace krv::waveform
