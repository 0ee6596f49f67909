// The connection settings, the serial configuration in them, and the utilities, as components.
#pragma once

#include <windows.h>

namespace krv::suite {

// Each with one reference; each throws std::bad_alloc.

// Empty settings of this computer.
[[nodiscard]] IUnknown* NewIOSettings();
// The serial library's defaults: port 1, 9600 baud, 8 data bits, no handshake.
[[nodiscard]] IUnknown* NewRS232Config();
[[nodiscard]] IUnknown* NewVCUtilities();

}  // namespace krv::suite
