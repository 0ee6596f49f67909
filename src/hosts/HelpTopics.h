// The pages of the help that dialogs open. Each is a topic of the user guide, of which the help
// files are made. They are named by path: the compiler of these files maps no numbers that can be
// used.
#pragma once

#include <cstdint>
#include <string>

namespace krv::hosts {

// What a dialog's Help names to the host adapter.
namespace HelpContext {
inline constexpr std::int32_t None = -1;
inline constexpr std::int32_t Download = 1;
inline constexpr std::int32_t Connect = 100;
}  // namespace HelpContext

// The page's path in the help file; empty for a context without one.
[[nodiscard]] inline std::string HelpTopic(std::int32_t contextID) {
    switch (contextID) {
        case HelpContext::Download:
            return "download.html";
        case HelpContext::Connect:
            return "connect.html";
        default:
            return {};
    }
}

}  // namespace krv::hosts
