#include "suite/discovery/SearchPlaces.h"

#include <chrono>
#include <string_view>

#include "suite/discovery/Announcement.h"
#include "suite/discovery/NetworkServices.h"
#include "suite/discovery/VisaAddresses.h"
#include "suite/scpi/SupportedModels.h"
#include "suite/transport/ResourceName.h"
#include "suite/transport/TcpAddress.h"

namespace krv::suite {
namespace {

constexpr std::string_view TcpScheme = "tcp://";
constexpr std::string_view VisaScheme = "visa://";

// VISA libraries are large, and look for what is connected.
constexpr std::chrono::seconds VisaLimit{5};

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

void LookForSigns(const AddressTaker& take, WaitWatcher& /*watcher*/) {
    FindAnnounced(take);
}

void LookIntoNetworks(const AddressTaker& take, WaitWatcher& /*watcher*/) {
    FindNetworkAddresses(take);
}

SearchPlace::Look LookThroughVisa(const std::string& library) {
    return [library](const AddressTaker& take, WaitWatcher& watcher) {
        for (const std::string& address : VisaAddresses(library, VisaLimit, &watcher)) {
            take(address);
        }
    };
}

}  // namespace

std::string ComputerOf(const std::string& address) {
    const std::string computer = RemoteComputerOf(address);
    return IsThisComputer(computer) ? LocalComputer : computer;
}

std::vector<SearchPlace> PlacesAt(const std::vector<std::string>& addresses) {
    std::vector<SearchPlace> places;
    for (const std::string& address : addresses) {
        places.push_back({.address = address});
    }
    return places;
}

std::vector<SearchPlace> UsualPlaces(const std::string& computer, const std::string& visaLibrary) {
    const std::string here = "127.0.0.1";
    // The places that follow have the same rank for each computer.
    const std::string& other = IsThisComputer(computer) ? here : computer;
    std::vector<SearchPlace> places =
        PlacesAt({TcpAddress{here, UsualPort}.Text(), TcpAddress{other, UsualPort}.Text()});
    places.push_back({.look = &LookForSigns});
    places.push_back({.look = LookThroughVisa(visaLibrary)});
    places.push_back({.look = &LookIntoNetworks});
    for (const std::string_view model : SupportedModels) {
        places.push_back({.address = "sim://" + std::string(model)});
    }
    return places;
}

}  // namespace krv::suite
