// What the host adapters need of the platform and the suite, handed over together.
#pragma once

#include "hosts/PictureTransfer.h"
#include "ports/desktop/HelpViewer.h"
#include "ports/suite/SuiteComponents.h"

namespace krv::hosts {

// References to services that outlive every adapter.
struct HostServices {
    ports::SuiteComponents& suite;
    ports::HelpViewer& help;
    // Null where screen images can't be transferred.
    PictureTransfer* pictures = nullptr;
};

}  // namespace krv::hosts
