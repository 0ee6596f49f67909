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

// Codes of one of a waveform's channels. They outlive the drawing.
struct ScreenTrace {
    std::span<const std::int16_t> codes;
    // From one point's code to the next point's.
    std::size_t stride = 1;
};

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
    // Of the waveform memory, in points.
    std::uint64_t usedPoints = 0;
    std::uint64_t freePoints = 0;
    // The selected waveform; an empty name when none is selected.
    std::string waveformName;
    std::uint64_t waveformPoints = 0;
    // Empty where there are none.
    ScreenTrace i;
    ScreenTrace q;
    // A code of marker bits for each point.
    ScreenTrace markers;
    std::size_t errorCount = 0;
    // Number and text; empty when there is no error.
    std::string oldestError;
};

[[nodiscard]] suite::picture::Picture DrawScreen(const ScreenContent& content);

}  // namespace krv::simulator
