// Creates host adapters. Each kind of adapter decides in its Init whether an application is its
// kind of host.
#pragma once

#include <memory>

#include "hosts/AppConnection.h"

namespace krv::hosts {

class AdapterFactory {
 public:
    virtual ~AdapterFactory() = default;
    // A new adapter that isn't attached yet; null when there is no adapter of this kind.
    virtual std::shared_ptr<AppConnection> CreateAdapter(SavedDataCvalues kind) = 0;
};

}  // namespace krv::hosts
