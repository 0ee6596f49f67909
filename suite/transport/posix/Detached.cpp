#include "suite/transport/Detached.h"

#include <system_error>
#include <thread>
#include <utility>

#include "suite/transport/TransportErrors.h"

namespace krv::suite {

void RunDetached(std::function<void()> work) {
    try {
        std::thread([work = std::move(work)] {
            try {
                work();
            } catch (...) {
                // Nobody waits for it.
            }
        }).detach();
    } catch (const std::system_error& failure) {
        throw ServerError(failure.what());
    }
}

}  // namespace krv::suite
