// Who is told of addresses at which instruments may be.
#pragma once

#include <functional>
#include <string>

namespace krv::suite {

// Is given each address as soon as it is known.
using AddressTaker = std::function<void(const std::string& address)>;

}  // namespace krv::suite
