// FoundInstrument: what a search says of an instrument that has answered.
#pragma once

#include <cstddef>
#include <string>

namespace krv::suite {

struct FoundInstrument {
    std::string address{};
    std::string model{};
    std::string serialNumber{};
    std::string firmwareRevision{};
    // The first of the search's places that named the address.
    std::size_t place = 0;
    friend bool operator==(const FoundInstrument&, const FoundInstrument&) = default;
};

// In the order of the places, and of the addresses where one place names several. Numbers in these
// come in their order.
[[nodiscard]] bool ComesBefore(const FoundInstrument& one, const FoundInstrument& other);

}  // namespace krv::suite
