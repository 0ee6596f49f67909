#include "suite/discovery/VisaAddresses.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

#include "common/ErrorTrap.h"
#include "suite/transport/ResourceName.h"
#include "suite/transport/TransportErrors.h"
#include "suite/transport/visa/CallThread.h"
#include "suite/transport/visa/VisaLibrary.h"

namespace krv::suite {
namespace {

// A list from anywhere could have no end.
constexpr std::uint32_t MostResources = 100;

struct ListedResources {
    std::vector<std::string> names;
    // Of a library that is there.
    std::string fault;
};

std::vector<std::string> ListResources(const visa::Functions& functions) {
    std::vector<std::string> names;
    visa::Object manager = 0;
    if (functions.openDefaultRM == nullptr || functions.openDefaultRM(&manager) < 0) {
        return names;
    }
    visa::Object list = 0;
    std::uint32_t count = 0;
    std::array<char, visa::DescriptionSize> name{};
    if (functions.findResources(manager, "?*INSTR", &list, &count, name.data()) >= 0) {
        for (std::uint32_t found = 1; found <= std::min(count, MostResources); ++found) {
            name.back() = '\0';
            names.emplace_back(name.data());
            if (found < count && functions.findNext(list, name.data()) < 0) {
                break;
            }
        }
        functions.close(list);
    }
    functions.close(manager);
    return names;
}

ListedResources ResourcesOf(const std::string& library) {
    const VisaLibrary visa = LoadVisa(library);
    return visa.fault.empty() ? ListedResources{ListResources(visa.functions), {}}
                              : ListedResources{{}, visa.isAbsent ? "" : visa.fault};
}

// False for a serial line, and for what isn't talked to.
bool IsToBeTried(const std::string& name) {
    bool isInstrument = false;
    TrapErrors([&] {
        isInstrument =
            IsResourceName(name) && ParseResourceName(name).kind != ResourceName::Kind::Serial;
    });
    return isInstrument;
}

}  // namespace

std::vector<std::string> VisaAddresses(const std::string& library, std::chrono::milliseconds limit,
                                       WaitWatcher* watcher) {
    const auto listed = std::make_shared<ListedResources>();
    CallThread thread;
    if (!thread.Run([listed, library] { *listed = ResourcesOf(library); },
                    Patience::Clock::now() + limit, watcher)) {
        return {};
    }
    if (!listed->fault.empty()) {
        throw ServerError("VISA can't be searched: " + listed->fault + '.');
    }
    std::vector<std::string> addresses;
    for (const std::string& name : listed->names) {
        if (IsToBeTried(name)) {
            addresses.push_back("visa://" + name);
        }
    }
    return addresses;
}

}  // namespace krv::suite
