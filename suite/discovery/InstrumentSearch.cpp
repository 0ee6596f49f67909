#include "suite/discovery/InstrumentSearch.h"

#include <algorithm>

#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/SupportedModels.h"
#include "suite/transport/TcpAddress.h"

namespace krv::suite {
namespace {

constexpr std::string_view TcpScheme = "tcp://";

bool IsThisComputer(const std::string& computer) {
    return computer.empty() || computer == LocalComputer || computer == "localhost" ||
           computer == "::1" || computer.starts_with("127.");
}

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
    std::vector<FoundInstrument> found;
    for (const std::string& address : addresses) {
        if (cancelled) {
            break;
        }
        try {
            const auto instrument = OpenInstrument(transports, address, timeOuts);
            found.push_back({address, instrument->Model(), instrument->SerialNumber()});
        } catch (const Error& failure) {
            // Nothing is there, or something else than an instrument.
            if (onFailure) {
                onFailure(address, failure);
            }
        }
    }
    return found;
}

std::string ComputerOf(const std::string& address) {
    if (!address.starts_with(TcpScheme)) {
        return LocalComputer;
    }
    const std::string computer = ParseTcpAddress(address.substr(TcpScheme.size())).computer;
    return IsThisComputer(computer) ? LocalComputer : computer;
}

}  // namespace krv::suite
