// SheetLayout: where the diagrams of a sheet lie.
#pragma once

#include <algorithm>

#include "plots/Canvas.h"
#include "plots/PlotSheet.h"

namespace krv::plots {

struct PanelPlace {
    Spot leftTop;
    Spot rightBottom;
};

struct SheetLayout {
    // Smaller sheets are cut off.
    static constexpr int LeastWidth = 920;
    static constexpr int LeastHeight = 480;

    PanelPlace time;
    PanelPlace spectrum;
    PanelPlace constellation;
    PanelPlace ccdf;

    [[nodiscard]] static SheetLayout Of(const SheetView& view) noexcept {
        constexpr double Left = 90;
        constexpr double Top = 66;
        // Below the time there are its labels and the markers, then the titles of the others.
        constexpr double Between = 136;
        constexpr double Below = 60;
        const double right = std::max(view.width, LeastWidth) - 30.0;
        const double bottom = std::max(view.height, LeastHeight) - Below;
        const double middle = Top + (bottom - Top - Between) * 0.49;
        const double lower = middle + Between;
        // The constellation is a square; what is left of the width is the others'.
        constexpr double GapLeft = 70;
        constexpr double GapRight = 86;
        const double side = std::min(bottom - lower, (right - Left) / 4);
        const double spectrumRight = Left + (right - Left - GapLeft - side - GapRight) * 0.66;
        const double squareLeft = spectrumRight + GapLeft;
        return {{{Left, Top}, {right, middle}},
                {{Left, lower}, {spectrumRight, bottom}},
                {{squareLeft, lower}, {squareLeft + side, lower + side}},
                {{squareLeft + side + GapRight, lower}, {right, bottom}}};
    }
};

}  // namespace krv::plots
