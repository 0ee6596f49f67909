#include "common/progress/frmCallback.h"

namespace krv {

frmCallback::frmCallback(desktop::FormScreen& screen, desktop::EventPump& events)
    : Form("frmCallback", screen),
      Label1(*this, "Label1", 2),
      ProgressBar1(*this, "ProgressBar1", 2),
      TextProgress(*this, "TextProgress", 2),
      CommandCancel(*this, "CommandCancel"),
      m_events(events) {}

void frmCallback::OnActivate() {
    static_cast<void>(m_events), static_cast<void>(m_callbackID), static_cast<void>(m_cancelFlag),
        static_cast<void>(m_activating);
}
void frmCallback::OnQueryClose() {}

}  // namespace krv
