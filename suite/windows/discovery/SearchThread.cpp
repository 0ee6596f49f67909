#include "suite/windows/discovery/SearchThread.h"

#include <utility>

#include "suite/windows/Transports.h"

namespace krv::suite {
namespace {

// An instrument in reach answers well within it.
constexpr std::chrono::milliseconds Patience{500};

}  // namespace

SearchThread::~SearchThread() {
    Stop();
}

void SearchThread::Start(std::vector<std::string> addresses, HWND window, UINT message) {
    Stop();
    // The ended search may have posted its message already.
    MSG stale{};
    PeekMessageW(&stale, window, message, message, PM_REMOVE);
    m_cancelled = false;
    m_thread = std::thread([this, addresses = std::move(addresses), window, message] {
        try {
            m_found = suite::FindInstruments(KnownTransports(), addresses, {Patience, Patience},
                                             m_cancelled);
        } catch (const std::exception&) {
            // Without memory nothing is found.
            m_found.clear();
        }
        PostMessageW(window, message, 0, 0);
    });
}

std::vector<suite::FoundInstrument> SearchThread::TakeResult() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
    return std::exchange(m_found, {});
}

void SearchThread::Stop() {
    m_cancelled = true;
    TakeResult().clear();
}

}  // namespace krv::suite
