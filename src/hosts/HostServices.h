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
    PictureTransfer& pictures;
};

}  // namespace krv::hosts
