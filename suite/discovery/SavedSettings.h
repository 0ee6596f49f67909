// SavedSettings: what a document keeps of connection settings, and its entries in a property bag.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/PropertyBag.h"
#include "suite/discovery/SearchPlaces.h"

namespace krv::suite {

struct SavedSettings {
    struct Model {
        std::string key;
        std::string name;
    };
    // The serial library's codes and numbers. Handshakes: 0 none, 1 by characters, 2 by the lines
    // of the hardware, 3 by both.
    struct Serial {
        std::string key;
        std::int32_t port = 1;
        std::int32_t baudRate = 9600;
        std::int32_t dataBits = 8;
        std::int32_t handshake = 0;
    };

    std::string instrumentType;
    std::string hostName = LocalComputer;
    std::vector<Model> supportedModels;
    std::vector<Serial> serialConfigurations;
    // The address of the session; empty without a session.
    std::string address;
};

// The address of a serial port with these settings. Characters of a handshake may stand in blocks
// of codes, so that the hardware's handshake alone counts.
[[nodiscard]] std::string AddressOf(const std::string& port, const SavedSettings::Serial& line);

// Throws Error 380 for what ReadSettings would refuse, and what the bag throws.
void WriteSettings(const SavedSettings& settings, PropertyBag& bag);

// The bag may come from anywhere; entries that are missing have the values above. Throws Error 380
// for an entry whose value can't be, 13 for one of another kind, and what the bag throws.
[[nodiscard]] SavedSettings ReadSettings(PropertyBag& bag);

}  // namespace krv::suite
