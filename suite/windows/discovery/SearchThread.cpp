#include "suite/windows/discovery/SearchThread.h"

#include <atomic>
#include <mutex>
#include <utility>

#include "common/Error.h"
#include "suite/transport/Detached.h"
#include "suite/windows/Transports.h"

namespace krv::suite {
namespace {

// An instrument in reach answers well within it.
constexpr std::chrono::milliseconds Patience{500};

}  // namespace

// What both threads share.
class SearchThread::Search final : public WaitWatcher {
 public:
    Search(HWND window, UINT message) : m_window(window), m_message(message) {}

    void Run(const Addresses& addresses) {
        std::vector<FoundInstrument> found;
        try {
            const TimeOuts timeOuts{.connect = Patience, .inactivity = Patience, .watcher = this};
            found = FindInstruments(KnownTransports(), addresses(), timeOuts, m_cancelled);
        } catch (const std::exception&) {
            // Without memory nothing is found.
            found.clear();
        }
        Finish(std::move(found));
    }
    void Finish(std::vector<FoundInstrument> found) {
        const std::scoped_lock lock(m_mutex);
        if (!m_cancelled) {
            m_found = std::move(found);
            PostMessageW(m_window, m_message, 0, 0);
        }
    }
    // The window may be gone afterwards.
    void Cancel() noexcept {
        const std::scoped_lock lock(m_mutex);
        m_cancelled = true;
    }
    std::optional<std::vector<FoundInstrument>> TakeResult() {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_found, std::nullopt);
    }
    void Waiting() override {
        if (m_cancelled) {
            throw CancelError();
        }
    }

 private:
    HWND m_window;
    UINT m_message;
    std::mutex m_mutex;
    std::atomic<bool> m_cancelled = false;
    std::optional<std::vector<FoundInstrument>> m_found;
};

void SearchThread::Start(Addresses addresses, HWND window, UINT message) {
    Abandon();
    m_search = std::make_shared<Search>(window, message);
    try {
        RunDetached(
            [search = m_search, addresses = std::move(addresses)] { search->Run(addresses); });
    } catch (const Error&) {
        m_search->Finish({});
    }
}

std::optional<std::vector<FoundInstrument>> SearchThread::TakeResult() {
    return m_search == nullptr ? std::nullopt : m_search->TakeResult();
}

void SearchThread::Abandon() noexcept {
    if (m_search != nullptr) {
        m_search->Cancel();
    }
}

}  // namespace krv::suite
