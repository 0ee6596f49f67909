#include "suite/windows/discovery/SearchThread.h"

#include <atomic>
#include <mutex>
#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
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

    void Run(const std::vector<SearchPlace>& places) {
        TrapErrors([&] {
            const TimeOuts timeOuts{.connect = Patience, .inactivity = Patience, .watcher = this};
            FindInstruments(KnownTransports(), places, timeOuts, m_cancelled,
                            {.onFound = [this](const FoundInstrument& found) {
                                Tell([&](News& news) { news.found.push_back(found); });
                            }});
        });
        End();
    }
    void End() {
        Tell([](News& news) { news.isOver = true; });
    }
    // The window may be gone afterwards.
    void Cancel() noexcept {
        const std::scoped_lock lock(m_mutex);
        m_cancelled = true;
    }
    News TakeNews() {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_news, {});
    }
    void Waiting() override {
        if (m_cancelled) {
            throw CancelError();
        }
    }

 private:
    template <class Work>
    void Tell(Work work) {
        const std::scoped_lock lock(m_mutex);
        if (!m_cancelled) {
            work(m_news);
            PostMessageW(m_window, m_message, 0, 0);
        }
    }

    HWND m_window;
    UINT m_message;
    std::mutex m_mutex;
    std::atomic<bool> m_cancelled = false;
    News m_news;
};

void SearchThread::Start(std::vector<SearchPlace> places, HWND window, UINT message) {
    Abandon();
    m_search = std::make_shared<Search>(window, message);
    const bool hasStarted = TrapErrors([&] {
        RunDetached([search = m_search, places = std::move(places)] { search->Run(places); });
    });
    if (!hasStarted) {
        m_search->End();
    }
}

SearchThread::News SearchThread::TakeNews() {
    return m_search == nullptr ? News{} : m_search->TakeNews();
}

void SearchThread::Abandon() noexcept {
    if (m_search != nullptr) {
        m_search->Cancel();
    }
}

}  // namespace krv::suite
