// What a connected instrument is and what the toolbar may therefore offer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace krv::control {

struct Identification {
    // One of hosts::ConnectionType.
    std::int16_t connectType = 0;
    // Shown to the user in this order.
    std::vector<std::string> warnings;
};

// Letters and numbers count wherever they stand in the model's name; revisions compare in plain
// character order. Model and revision come without blanks at their ends.
[[nodiscard]] Identification Identify(const std::string& model, const std::string& revision,
                                      bool isSerial);

}  // namespace krv::control
