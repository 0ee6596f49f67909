#include "waveform/run/DownloadRun.h"

namespace krv {

void DownloadRun::Run() {
    static_cast<void>(m_dialog);
}
bool DownloadRun::Prepare() {
    return false;
}

}  // namespace krv
