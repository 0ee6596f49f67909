#include "suite/discovery/InstrumentSearch.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/SupportedModels.h"
#include "suite/transport/Detached.h"
#include "suite/transport/ResourceName.h"
#include "suite/transport/TcpAddress.h"

namespace krv::suite {
namespace {

constexpr std::string_view TcpScheme = "tcp://";
constexpr std::string_view VisaScheme = "visa://";

bool IsThisComputer(const std::string& computer) {
    return computer.empty() || computer == LocalComputer || computer == "localhost" ||
           computer == "::1" || computer.starts_with("127.");
}

// Empty for an instrument that isn't reached through the network.
std::string RemoteComputerOf(const std::string& address) {
    if (address.starts_with(TcpScheme)) {
        return ParseTcpAddress(address.substr(TcpScheme.size())).computer;
    }
    const std::string name =
        address.substr(address.starts_with(VisaScheme) ? VisaScheme.size() : 0);
    return IsResourceName(name) ? ParseResourceName(name).computer : std::string();
}

// One search: what its threads share, since some of them may outlive it.
class AddressSearch final : public WaitWatcher {
 public:
    using Clock = std::chrono::steady_clock;

    AddressSearch(const TransportRegistry& transports, const std::vector<std::string>& addresses,
                  const TimeOuts& timeOuts)
        : m_transports(transports), m_addresses(addresses), m_timeOuts(timeOuts) {
        m_timeOuts.watcher = this;
        m_outcomes.resize(addresses.size());
    }

    // On a thread of its own.
    void Try(std::size_t index) {
        Outcome outcome;
        outcome.failure = FailureOf([&] {
            const std::string& address = m_addresses[index];
            ScpiInstrument instrument(
                {m_transports.Open(address, m_timeOuts), address, m_timeOuts});
            instrument.AskIdentity();
            outcome.found = {address, instrument.Model(), instrument.SerialNumber(),
                             instrument.FirmwareRevision()};
        });
        outcome.isDone = true;
        const std::lock_guard lock(m_mutex);
        m_outcomes[index] = std::move(outcome);
        m_changed.notify_all();
    }

    void Wait(Clock::time_point latest, const std::atomic<bool>& cancelled, WaitWatcher* watcher) {
        constexpr std::chrono::milliseconds WatchInterval{50};
        std::unique_lock lock(m_mutex);
        const auto isDone = [this] {
            return std::ranges::all_of(m_outcomes, [](const Outcome& each) { return each.isDone; });
        };
        const ScopeExit end([this] { m_isOver = true; });
        while (!m_changed.wait_for(lock, WatchInterval, isDone) && !cancelled &&
               Clock::now() < latest) {
            if (watcher != nullptr) {
                watcher->Waiting();
            }
        }
    }

    // In the order of the addresses.
    std::vector<FoundInstrument> Result(bool isCancelled, const SearchFailure& onFailure) {
        std::vector<FoundInstrument> found;
        const std::lock_guard lock(m_mutex);
        for (std::size_t index = 0; index < m_addresses.size() && !isCancelled; ++index) {
            const Outcome& outcome = m_outcomes[index];
            if (outcome.isDone && !outcome.failure) {
                found.push_back(outcome.found);
            } else if (onFailure) {
                onFailure(m_addresses[index], outcome.failure.value_or(CancelError()));
            }
        }
        return found;
    }

    // Ends the tries that the search doesn't wait for any more.
    void Waiting() override {
        if (m_isOver) {
            throw CancelError();
        }
    }

 private:
    struct Outcome {
        bool isDone = false;
        FoundInstrument found;
        // There is nothing, or something else than an instrument.
        std::optional<Error> failure;
    };

    TransportRegistry m_transports;
    std::vector<std::string> m_addresses;
    TimeOuts m_timeOuts;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Outcome> m_outcomes;
    std::atomic<bool> m_isOver = false;
};

}  // namespace

std::vector<std::string> CandidateAddresses(const std::string& computer,
                                            const std::vector<std::string>& announced) {
    std::vector<std::string> addresses{TcpAddress{"127.0.0.1", UsualPort}.Text()};
    if (!IsThisComputer(computer)) {
        addresses.push_back(TcpAddress{computer, UsualPort}.Text());
    }
    for (const std::string& address : announced) {
        if (std::find(addresses.begin(), addresses.end(), address) == addresses.end()) {
            addresses.push_back(address);
        }
    }
    for (const std::string_view model : SupportedModels) {
        addresses.push_back("sim://" + std::string(model));
    }
    return addresses;
}

std::vector<FoundInstrument> FindInstruments(const TransportRegistry& transports,
                                             const std::vector<std::string>& addresses,
                                             const TimeOuts& timeOuts,
                                             const std::atomic<bool>& cancelled,
                                             const SearchFailure& onFailure) {
    const auto search = std::make_shared<AddressSearch>(transports, addresses, timeOuts);
    for (std::size_t index = 0; index < addresses.size() && !cancelled; ++index) {
        RunDetached([search, index] { search->Try(index); });
    }
    // What takes longer than all its time-outs is left to itself.
    search->Wait(AddressSearch::Clock::now() + timeOuts.connect + 2 * timeOuts.inactivity,
                 cancelled, timeOuts.watcher);
    return search->Result(cancelled, onFailure);
}

std::string ComputerOf(const std::string& address) {
    const std::string computer = RemoteComputerOf(address);
    return IsThisComputer(computer) ? LocalComputer : computer;
}

}  // namespace krv::suite
