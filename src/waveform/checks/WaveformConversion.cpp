#include "waveform/checks/WaveformConversion.h"

namespace krv {

bool WaveformConversion::Run() {
    return static_cast<void>(m_dialog), false;
}

}  // namespace krv
