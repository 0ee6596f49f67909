#include "common/progress/frmCallback.h"

#include <algorithm>
#include <limits>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Numbers.h"
#include "common/ScopeExit.h"

namespace krv::progress {
namespace {

// Places in twips.
constexpr int Left = 120;
constexpr int RowWidth = 3495;
constexpr std::array<int, 2> RowTop{120, 1080};

// The index of a row's controls.
std::int16_t ToIndex(std::int16_t row) {
    if (row == std::numeric_limits<std::int16_t>::min()) {
        throw Error(ErrorNumber::Overflow);
    }
    return static_cast<std::int16_t>(row - 1);
}

std::size_t ToLinkIndex(std::int16_t row) {
    const std::int16_t index = ToIndex(row);
    if (index < 0 || index >= frmCallback::LinkRows) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return static_cast<std::size_t>(index);
}

void BringInOrder(std::int32_t& minimum, std::int32_t& maximum, std::int32_t& value) {
    if (minimum >= maximum) {
        if (minimum == std::numeric_limits<std::int32_t>::max()) {
            throw Error(ErrorNumber::Overflow);
        }
        maximum = minimum + 1;
    }
    value = std::min(std::max(value, minimum), maximum);
}

}  // namespace

frmCallback::frmCallback(ports::FormScreen& screen, ports::EventPump& events)
    : Form("frmCallback", screen),
      Label1(*this, "Label1", 2),
      ProgressBar1(*this, "ProgressBar1", 2),
      TextProgress(*this, "TextProgress", 2),
      CommandCancel(*this, "CommandCancel"),
      m_events(events) {
    Caption = "Download Waveform to KRV";
    Place = {0, 0, 3735, 2655};
    for (int row = 0; row < 2; ++row) {
        PlaceRow(row);
    }
    CommandCancel.LayOut({1320, 2040, 1215, 495}, "Cancel");
    CommandCancel.IsCancel = true;
    CommandCancel.OnClick = [this] { RequestCancel(); };
}

void frmCallback::PlaceRow(int row) {
    const int top = RowTop.at(static_cast<std::size_t>(row));
    Label1[row].LayOut({Left, top, RowWidth, 255}, "Downloading...");
    ProgressBar1[row].LayOut({Left, top + 360, RowWidth, 375});
    // The text line lies over the bar: a row shows one of them.
    forms::TextBox& textLine = TextProgress[row];
    textLine.LayOut({Left, top + 360, RowWidth, 495});
    textLine.Locked = true;
    textLine.TabStop = false;
    textLine.HasBorder = false;
    textLine.MultiLine = true;
    textLine.BackColor = forms::SystemColor::ButtonFace;
    textLine.Visible = false;
}

void frmCallback::SetFormCaption(const std::string& caption) {
    Caption = caption;
}

void frmCallback::SetCallbackID(std::int16_t id) {
    m_callbackID = id;
}

void frmCallback::SetWaitMessage(std::int16_t row, const std::string& message) {
    Label1[ToIndex(row)].Caption = message;
    if (!IsVisible()) {
        ShowModeless();
    }
    Refresh();
}

void frmCallback::ClearWaitMessage(std::int16_t row) {
    const std::int16_t index = ToIndex(row);
    Label1[index].Caption = "";
    ProgressBar1[index].Visible = false;
    TextProgress[index].Visible = false;
    CommandCancel.Enabled = true;
    Label1[index].Refresh();
    ProgressBar1[index].Refresh();
}

void frmCallback::HideProgressBar(std::int16_t row, const std::string& text) {
    const std::int16_t index = ToIndex(row);
    TextProgress[index].Text = text;
    ProgressBar1[index].Visible = false;
    TextProgress[index].Visible = true;
    CommandCancel.Enabled = false;
}

void frmCallback::LinkProgressBars(std::int16_t row, std::int32_t low, std::int32_t high) {
    const std::size_t index = ToLinkIndex(row);
    m_linkLow[index] = low;
    m_linkHigh[index] = high;
    m_linked[index] = true;
}

void frmCallback::UnlinkProgressBars(std::int16_t row) {
    m_linked[ToLinkIndex(row)] = false;
}

void frmCallback::SetProgressBar(std::int16_t row, std::int32_t minimum, std::int32_t maximum,
                                 std::int32_t value) {
    // Progress never gets in the way of the work.
    TrapErrors([&] {
        const std::int16_t index = ToIndex(row);
        BringInOrder(minimum, maximum, value);
        forms::ProgressBar& bar = ProgressBar1[index];
        bar.Min = static_cast<float>(minimum);
        bar.Max = static_cast<float>(maximum);
        bar.Value = static_cast<float>(value);
        bar.Visible = true;
        if (m_linked[static_cast<std::size_t>(index)]) {
            AdvanceRowAbove(index, minimum, maximum, value);
        }
    });
}

void frmCallback::AdvanceRowAbove(std::int16_t index, std::int32_t minimum, std::int32_t maximum,
                                  std::int32_t value) {
    const double low = m_linkLow[static_cast<std::size_t>(index)];
    const double high = m_linkHigh[static_cast<std::size_t>(index)];
    const double fraction =
        (static_cast<double>(value) - minimum) / (static_cast<double>(maximum) - minimum);
    const std::int32_t parentValue = ToInt32(fraction * (high - low) + low);
    const forms::ProgressBar& parent = ProgressBar1[index - 1];
    const std::int32_t parentMinimum = ToInt32(static_cast<double>(parent.Min));
    const std::int32_t parentMaximum = ToInt32(static_cast<double>(parent.Max));
    // Rows count from 1, so this index is the number of the row above.
    SetProgressBar(index, parentMinimum, parentMaximum, parentValue);
}

bool frmCallback::TestCancelFlag() {
    m_events.ProcessPendingEvents();
    return m_cancelFlag;
}

bool frmCallback::TestCancelFlagInLoop() {
    m_events.ProcessEventsInLoop();
    return m_cancelFlag;
}

void frmCallback::OnActivate() {
    if (m_activating) {
        return;
    }
    m_activating = true;
    m_cancelFlag = false;
    CommandCancel.Enabled = true;
    CommandCancel.Refresh();
    const ScopeExit end([this] { EndActivation(); });
    RunCallback();
}

void frmCallback::RunCallback() {
    if (m_callbackID != 1) {
        return;
    }
    if (CallbackOwner == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    CallbackOwner->RunDownload();
}

void frmCallback::EndActivation() {
    Hide();
    m_callbackID = 0;
    CallbackOwner = nullptr;
    m_activating = false;
}

void frmCallback::OnQueryClose() {
    if (CommandCancel.Enabled) {
        RequestCancel();
    }
    if (!m_activating) {
        Hide();
    }
}

void frmCallback::RequestCancel() {
    m_cancelFlag = true;
    CommandCancel.Enabled = false;
    CommandCancel.Refresh();
}

}  // namespace krv::progress
