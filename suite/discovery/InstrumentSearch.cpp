#include "suite/discovery/InstrumentSearch.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/transport/Detached.h"

namespace krv::suite {
namespace {

using Clock = std::chrono::steady_clock;

// Each address has a thread.
constexpr std::size_t MostTries = 256;

// One search: what its threads share, since some of them may outlive it.
class AddressSearch final : public WaitWatcher, public std::enable_shared_from_this<AddressSearch> {
 public:
    AddressSearch(const TransportRegistry& transports, std::vector<SearchPlace> places,
                  const TimeOuts& timeOuts)
        : m_transports(transports), m_places(std::move(places)), m_timeOuts(timeOuts) {
        m_timeOuts.watcher = this;
    }

    void Start() {
        for (std::size_t place = 0; place < m_places.size(); ++place) {
            if (m_places[place].look) {
                StartLooking(place);
            } else {
                Take(place, m_places[place].address);
            }
        }
    }

    // Until all is over, or is to be.
    void Wait(const std::atomic<bool>& cancelled, WaitWatcher* watcher,
              const SearchReports& reports) {
        const ScopeExit end([this] { m_isOver = true; });
        bool isDone = false;
        while (!isDone && !cancelled) {
            for (const FoundInstrument& found : AwaitNews(isDone)) {
                if (reports.onFound) {
                    reports.onFound(found);
                }
            }
            if (watcher != nullptr) {
                watcher->Waiting();
            }
        }
    }

    [[nodiscard]] std::vector<FoundInstrument> Result(const SearchReports& reports) {
        std::vector<FoundInstrument> found;
        const std::lock_guard lock(m_mutex);
        for (const Try& each : m_tries) {
            if (each.isDone && !each.failure) {
                found.push_back(each.found);
            } else if (reports.onFailure) {
                reports.onFailure(each.found.address, each.failure.value_or(CancelError()));
            }
        }
        for (const Error& failure : m_lookFailures) {
            if (reports.onFailure) {
                reports.onFailure({}, failure);
            }
        }
        std::ranges::sort(found, &ComesBefore);
        return found;
    }

    // Ends the looks and tries that the search doesn't wait for any more.
    void Waiting() override {
        if (m_isOver) {
            throw CancelError();
        }
    }

 private:
    struct Try {
        // Before it is done, only the address and the place.
        FoundInstrument found;
        // What takes longer than all its time-outs is left to itself.
        Clock::time_point latest;
        bool isDone = false;
        // There is nothing, or something else than an instrument.
        std::optional<Error> failure{};
    };

    void StartLooking(std::size_t place) {
        {
            const std::lock_guard lock(m_mutex);
            ++m_looksUnderWay;
        }
        const auto failure = FailureOf(
            [&] { RunDetached([self = shared_from_this(), place] { self->Look(place); }); });
        if (failure) {
            EndLook(failure);
        }
    }
    void Look(std::size_t place) {
        std::optional<Error> failure;
        const ScopeExit end([&] { EndLook(failure); });
        failure = FailureOf([&] {
            m_places[place].look([&](const std::string& address) { Take(place, address); }, *this);
        });
    }
    void EndLook(const std::optional<Error>& failure) {
        const std::lock_guard lock(m_mutex);
        --m_looksUnderWay;
        if (failure) {
            m_lookFailures.push_back(*failure);
        }
        m_changed.notify_all();
    }

    // An address that several places name is tried once.
    void Take(std::size_t place, const std::string& address) {
        const std::lock_guard lock(m_mutex);
        for (Try& each : m_tries) {
            if (each.found.address == address) {
                each.found.place = std::min(each.found.place, place);
                return;
            }
        }
        if (m_isOver || m_tries.size() == MostTries) {
            return;
        }
        const std::size_t index = m_tries.size();
        m_tries.push_back(
            {.found = {.address = address, .place = place},
             .latest = Clock::now() + m_timeOuts.connect + 2 * m_timeOuts.inactivity});
        m_tries[index].failure = FailureOf([&] {
            RunDetached(
                [self = shared_from_this(), index, address] { self->TryAddress(index, address); });
        });
        m_tries[index].isDone = m_tries[index].failure.has_value();
    }

    void TryAddress(std::size_t index, const std::string& address) {
        FoundInstrument found;
        auto failure = FailureOf([&] {
            ScpiInstrument instrument(
                {m_transports.Open(address, m_timeOuts), address, m_timeOuts});
            instrument.AskIdentity();
            found = {address, instrument.Model(), instrument.SerialNumber(),
                     instrument.FirmwareRevision()};
        });
        const std::lock_guard lock(m_mutex);
        Try& outcome = m_tries[index];
        outcome.isDone = true;
        outcome.failure = std::move(failure);
        if (!outcome.failure) {
            found.place = outcome.found.place;
            outcome.found = found;
            m_news.push_back(std::move(found));
        }
        m_changed.notify_all();
    }

    // What has been found since this was asked last; empty when it is time to look around.
    std::vector<FoundInstrument> AwaitNews(bool& isDone) {
        constexpr std::chrono::milliseconds WatchInterval{50};
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, WatchInterval, [this] { return !m_news.empty() || IsDone(); });
        isDone = IsDone();
        return std::exchange(m_news, {});
    }
    [[nodiscard]] bool IsDone() const {
        const auto now = Clock::now();
        return m_looksUnderWay == 0 && std::ranges::all_of(m_tries, [&](const Try& each) {
                   return each.isDone || each.latest < now;
               });
    }

    const TransportRegistry m_transports;
    const std::vector<SearchPlace> m_places;
    TimeOuts m_timeOuts;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::size_t m_looksUnderWay = 0;
    std::vector<Error> m_lookFailures;
    std::vector<Try> m_tries;
    std::vector<FoundInstrument> m_news;
    std::atomic<bool> m_isOver = false;
};

}  // namespace

std::vector<FoundInstrument> FindInstruments(const TransportRegistry& transports,
                                             const std::vector<SearchPlace>& places,
                                             const TimeOuts& timeOuts,
                                             const std::atomic<bool>& cancelled,
                                             const SearchReports& reports) {
    const auto search = std::make_shared<AddressSearch>(transports, places, timeOuts);
    search->Start();
    search->Wait(cancelled, timeOuts.watcher, reports);
    return cancelled ? std::vector<FoundInstrument>() : search->Result(reports);
}

}  // namespace krv::suite
