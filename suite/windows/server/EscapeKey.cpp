#include "suite/windows/server/EscapeKey.h"

#include <windows.h>

#include <utility>

#include "common/Error.h"

namespace krv::suite {
namespace {

// Down now, or pressed since this was asked before.
bool HasBeenPressed() {
    return GetAsyncKeyState(VK_ESCAPE) != 0;
}

bool IsThisThreadInFront() {
    return GetWindowThreadProcessId(GetForegroundWindow(), nullptr) == GetCurrentThreadId();
}

}  // namespace

EscapeKey::EscapeKey(std::string whatEnded) : m_whatEnded(std::move(whatEnded)) {
    static_cast<void>(HasBeenPressed());
}

EscapeKey::~EscapeKey() {
    MSG message{};
    while (m_pressed &&
           PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE | PM_QS_INPUT) != 0) {
    }
}

void EscapeKey::Waiting() {
    if (HasBeenPressed() && IsThisThreadInFront()) {
        m_pressed = true;
        throw Error(ErrorNumber::CancelPressed, m_whatEnded);
    }
}

EscapeEndsWaits::EscapeEndsWaits(std::shared_ptr<ScpiInstrument> instrument, std::string whatEnded)
    : m_key(std::move(whatEnded)), m_instrument(std::move(instrument)) {
    TimeOuts timeOuts;
    timeOuts.watcher = &m_key;
    m_instrument->SetTimeOuts(timeOuts);
}

EscapeEndsWaits::~EscapeEndsWaits() {
    m_instrument->SetTimeOuts({});
}

}  // namespace krv::suite
