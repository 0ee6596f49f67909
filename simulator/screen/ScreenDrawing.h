// The generator's display: its settings, the selected waveform and the oldest error as a picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "suite/picture/Picture.h"

namespace krv::simulator {

// In pixels.
namespace ScreenSize {
inline constexpr int Width = 640;
inline constexpr int Height = 320;
}  // namespace ScreenSize

// What the display shows.
struct ScreenContent {
    std::string model;
    std::string serialNumber;
    std::string firmware;
    bool isRemote = false;
    double frequencyHz = 0;
    double levelDbm = 0;
    bool isOutputOn = false;
    bool isPlaying = false;
    // In the waveform memory, in points.
    std::uint64_t usedPoints = 0;
    // The selected waveform; an empty name when none is selected.
    std::string waveformName;
    std::uint64_t waveformPoints = 0;
    // Its codes, of which every `codesPerPoint`-th belongs to I. They outlive the drawing.
    std::span<const std::int16_t> codes;
    std::size_t codesPerPoint = 1;
    std::size_t errorCount = 0;
    // Number and text; empty when there is no error.
    std::string oldestError;
};

[[nodiscard]] suite::picture::Picture DrawScreen(const ScreenContent& content);

}  // namespace krv::simulator
