// Work on a thread that is never waited for. The platform's part is in the folders `posix` and
// `windows`.
#pragma once

#include <functional>

namespace krv::suite {

// The work may outlive everything but the process: the module that its code lies in stays loaded
// until it has come to its end. An exception ends the work and nothing else. Throws Error when the
// system has no thread left.
void RunDetached(std::function<void()> work);

}  // namespace krv::suite
