// What the host adapters need of the platform and the suite, handed over together.
#pragma once

#include <memory>

#include "hosts/PictureTransfer.h"
#include "hosts/SharedBar.h"
#include "ports/desktop/HelpViewer.h"
#include "ports/suite/SuiteComponents.h"

namespace krv::hosts {

// References to services that outlive every adapter.
struct HostServices {
    ports::SuiteComponents& suite;
    ports::HelpViewer& help;
    PictureTransfer& pictures;
    // All adapters that are given these services share it; never null.
    std::shared_ptr<SharedBar> bar = std::make_shared<SharedBar>();
};

}  // namespace krv::hosts
