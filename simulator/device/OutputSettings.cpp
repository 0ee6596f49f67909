#include "simulator/device/OutputSettings.h"

#include <algorithm>

namespace krv::simulator {
namespace {

struct ModelLimits {
    std::string_view model;
    OutputLimits limits;
};

constexpr std::array<ModelLimits, 6> Models{{
    {"M7718C", {250e3, 20e9, -136, 25, 1, 100e6}},
    {"M9920C", {250e3, 6e9, -136, 17, 1, 100e6}},
    {"M9920D", {250e3, 6e9, -136, 17, 1, 80e6}},
    {"M771XB", {250e3, 20e9, -136, 20, 1, 40e6}},
    {"M771XD", {250e3, 20e9, -136, 25, 1, 40e6}},
    {"KRV-B", {250e3, 4e9, -136, 13, 1, 40e6}},
}};

}  // namespace

const OutputLimits& OutputLimitsOf(std::string_view model) noexcept {
    const auto found = std::ranges::find(Models, model, &ModelLimits::model);
    return found == Models.end() ? Models.front().limits : found->limits;
}

}  // namespace krv::simulator
