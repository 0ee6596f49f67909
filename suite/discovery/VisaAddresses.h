// The instruments that a VISA library lists.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "suite/transport/Transport.h"

namespace krv::suite {

// Their addresses, but not those of serial lines, at which may be anything. The library is the one
// of this file or name, and the installed one where the name is empty. Empty where none is
// installed, and when it takes longer than the limit. Throws Error for a library that can't be
// used, and what the watcher, which may be null, throws.
[[nodiscard]] std::vector<std::string> VisaAddresses(const std::string& library,
                                                     std::chrono::milliseconds limit,
                                                     WaitWatcher* watcher = nullptr);

}  // namespace krv::suite
