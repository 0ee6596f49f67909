#include "waveform/readers/WaveformFetch.h"

namespace krv {

bool WaveformFetch::Run() {
    return static_cast<void>(m_dialog), false;
}

}  // namespace krv
