// What the toolbar control needs of its front and of the pieces that it brings together.
#pragma once

#include <functional>
#include <memory>

#include "about/AboutBox.h"
#include "hosts/AdapterFactory.h"
#include "ports/desktop/ControlSurface.h"
#include "ports/desktop/Desktop.h"
#include "ports/office/Excel.h"
#include "ports/suite/SuiteComponents.h"
#include "waveform/dialog/WaveformPreview.h"

namespace krv::control {

// References to what outlives the control.
struct ControlServices {
    ports::Desktop desktop;
    ports::ControlSurface& surface;
    ports::SuiteComponents& suite;
    hosts::AdapterFactory& adapters;
    about::AboutBox& about;
    // Null where there are none to attach to.
    ports::RunningApplications* runningApplications = nullptr;
    // Makes the window in which a download dialog shows its waveform; empty where there is none.
    std::function<std::unique_ptr<waveform::WaveformPreview>()> newPreview = {};
};

}  // namespace krv::control
