// What the commands print for programs: one JSON object, in English and with the same keys in every
// version.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace krv::cli {

// Keys stay in the order they are written.
using OutputJson = nlohmann::ordered_json;

inline void PrintJson(const OutputJson& json, std::ostream& out) {
    // A file name or an instrument's text may be no UTF-8: what isn't becomes U+FFFD.
    out << json.dump(2, ' ', false, OutputJson::error_handler_t::replace) << '\n';
}

// Null for an empty text.
[[nodiscard]] inline OutputJson TextOrNull(const std::string& text) {
    return text.empty() ? OutputJson(nullptr) : OutputJson(text);
}

}  // namespace krv::cli
