// The instrument server as a component: it, its instrument, its arbitrary-waveform object and its
// options. All of them show the state of the one server, whichever instrument it talks to.
#pragma once

#include <windows.h>

namespace krv::suite {

// A new server that isn't connected, with one reference. Throws std::bad_alloc.
[[nodiscard]] IUnknown* NewKRVServer();

}  // namespace krv::suite
