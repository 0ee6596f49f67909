// Canvas: what plots are drawn on. Places are in units of the sheet, from its left top corner.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace krv::plots {

struct Spot {
    double x = 0;
    double y = 0;
};

// What a colour is for; the palette says which it is.
enum class Ink : std::uint8_t { Background, Grid, Frame, Text, I, Q, Trace, Marker, Path };

enum class Anchor : std::uint8_t { Left, Centre, Right };

class Canvas {
 public:
    virtual ~Canvas() = default;
    // From each spot to the next.
    virtual void Line(std::span<const Spot> spots, Ink ink) = 0;
    // The area between two opposite corners.
    virtual void Fill(Spot corner, Spot opposite, Ink ink) = 0;
    // The anchor's side of the text at the spot, which is half as high as its capitals.
    virtual void Write(Spot at, std::string_view text, Anchor anchor) = 0;
};

}  // namespace krv::plots
