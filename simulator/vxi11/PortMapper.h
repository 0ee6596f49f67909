// The port mapper (RFC 1833, version 2): tells clients the port at which a program is served.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/vxi11/RemoteCall.h"

namespace krv::simulator {

struct MappedProgram {
    std::uint32_t number;
    std::uint32_t version;
    // Over TCP.
    std::uint16_t port;
};

// A port mapper that knows these programs and takes no others.
[[nodiscard]] RemoteProgram PortMapper(std::vector<MappedProgram> programs);

}  // namespace krv::simulator
