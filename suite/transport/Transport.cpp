#include "suite/transport/Transport.h"

#include <utility>
#include <vector>

#include "common/NearMiss.h"
#include "common/Text.h"
#include "suite/transport/ResourceName.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

std::string SchemeList(const std::map<std::string, TransportRegistry::Opener>& openers) {
    std::string list;
    for (const auto& [scheme, opener] : openers) {
        list += (list.empty() ? "" : ", ") + scheme + "://";
    }
    return list.empty() ? "none" : list;
}

}  // namespace

bool IsUsableAddress(const std::string& address) noexcept {
    constexpr std::size_t Longest = 255;
    return !address.empty() && address.size() <= Longest && !HasControlCharacters(address);
}

void TransportRegistry::InterceptOpening(Interceptor interceptor) {
    if (m_interceptor) {
        interceptor = [outer = std::move(interceptor), inner = std::move(m_interceptor)](
                          const std::string& address, const OpenCall& open) {
            return outer(address, [&] { return inner(address, open); });
        };
    }
    m_interceptor = std::move(interceptor);
}

std::unique_ptr<Transport> TransportRegistry::Open(const std::string& address,
                                                   const TimeOuts& timeOuts) const {
    if (!address.empty() && !IsUsableAddress(address)) {
        throw ServerError(
            "The address cannot be used: it is longer than 255 characters or holds control "
            "characters.");
    }
    if (!m_interceptor) {
        return OpenByScheme(address, timeOuts);
    }
    return m_interceptor(address, [&] { return OpenByScheme(address, timeOuts); });
}

std::unique_ptr<Transport> TransportRegistry::OpenByScheme(const std::string& address,
                                                           const TimeOuts& timeOuts) const {
    if (IsResourceName(address)) {
        return OpenByScheme(AddressOfResource(address), timeOuts);
    }
    const auto separator = address.find("://");
    if (separator == std::string::npos) {
        throw AddressError(address,
                           "it has no scheme; schemes that are known: " + SchemeList(m_openers));
    }
    const auto opener = m_openers.find(address.substr(0, separator));
    if (opener == m_openers.end()) {
        std::vector<std::string> known;
        for (const auto& [scheme, open] : m_openers) {
            known.push_back(scheme + "://");
        }
        throw AddressError(
            address, "its scheme is not known; schemes that are: " + SchemeList(m_openers) + '.' +
                         NearMissHint(address.substr(0, separator + 3), known));
    }
    return opener->second(address.substr(separator + 3), timeOuts);
}

}  // namespace krv::suite
