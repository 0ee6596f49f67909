// What the platform says about the running process.
#pragma once

#include <cstdint>
#include <string>

namespace krv::ports {

class Process {
 public:
    virtual ~Process() = default;
    virtual std::uint32_t Id() = 0;
    // The folder for temporary files, with the separator at its end; empty when there is none.
    virtual std::string TemporaryFolder() = 0;
};

}  // namespace krv::ports
