#include "simulator/device/GeneratorSettings.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>

#include "common/NearMiss.h"
#include "suite/scpi/SupportedModels.h"

namespace krv::simulator {
namespace {

// Replies separate their fields with commas and end at a line break.
void RequireField(std::string_view what, const std::string& text) {
    const bool fits = std::all_of(text.begin(), text.end(), [](char character) {
        return character > ' ' && character <= '~' && character != ',' && character != ';' &&
               character != '"';
    });
    if (text.empty() || !fits) {
        throw std::invalid_argument("The " + std::string(what) + " \"" + text +
                                    "\" cannot be used: it must be printable ASCII without blanks, "
                                    "commas, semicolons and quotation marks.");
    }
}

// E.g. "US00000001".
std::string SerialNumber(std::size_t number) {
    constexpr std::size_t Digits = 8;
    const std::string text = std::to_string(number);
    return "US" + std::string(Digits - text.size(), '0') + text;
}

}  // namespace

std::string SerialNumberOf(const std::string& model) {
    const auto found = std::ranges::find(suite::SupportedModels, model);
    return SerialNumber(static_cast<std::size_t>(found - suite::SupportedModels.begin()) + 1);
}

std::string SerialNumberAt(std::uint16_t port) {
    constexpr std::size_t FirstServed = 10'000'000;
    return SerialNumber(FirstServed + port);
}

void RequireValid(const GeneratorSettings& settings) {
    if (std::ranges::find(suite::SupportedModels, settings.model) == suite::SupportedModels.end()) {
        throw std::invalid_argument(
            "The model \"" + settings.model +
            "\" is not known. Known models: " + suite::SupportedModelNames() + '.' +
            NearMissHint(settings.model,
                         {suite::SupportedModels.begin(), suite::SupportedModels.end()}));
    }
    RequireField("firmware revision", settings.firmware);
    if (settings.serialNumber) {
        RequireField("serial number", *settings.serialNumber);
    }
    for (const std::string& option : settings.options) {
        RequireField("option", option);
    }
}

}  // namespace krv::simulator
