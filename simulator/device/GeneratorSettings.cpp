#include "simulator/device/GeneratorSettings.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace krv::simulator {
namespace {

constexpr std::array<std::string_view, 6> Models{"M7718C", "M9920C", "M9920D",
                                                 "M771XB", "M771XD", "KRV-B"};

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

}  // namespace

std::span<const std::string_view> GeneratorModels() noexcept {
    return Models;
}

void RequireValid(const GeneratorSettings& settings) {
    if (std::find(Models.begin(), Models.end(), settings.model) == Models.end()) {
        std::string known;
        for (const std::string_view model : Models) {
            known += (known.empty() ? "" : ", ") + std::string(model);
        }
        throw std::invalid_argument("The model \"" + settings.model +
                                    "\" is not known. Known models: " + known + ".");
    }
    RequireField("firmware revision", settings.firmware);
    RequireField("serial number", settings.serialNumber);
    for (const std::string& option : settings.options) {
        RequireField("option", option);
    }
}

}  // namespace krv::simulator
