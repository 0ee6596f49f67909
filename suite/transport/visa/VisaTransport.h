// The way to instruments through the VISA library of their interface's maker.
#pragma once

#include <string>

#include "suite/transport/Transport.h"

namespace krv::suite {

// Adds `visa://RESOURCE` (see ResourceName.h; other names are those that the library knows). A
// serial line may have its settings behind it (see SerialAddress.h). The library is the one of this
// file or name, and the installed one where the name is empty. It is loaded when an address needs
// it.
void AddVisaTransport(TransportRegistry& registry, const std::string& library = {});

}  // namespace krv::suite
