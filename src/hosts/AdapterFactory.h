// Creates host adapters. Each kind of adapter decides in its Init whether it can attach to an
// application.
#pragma once

#include <memory>

#include "hosts/AppConnection.h"

namespace krv::hosts {

class AdapterFactory {
 public:
    virtual ~AdapterFactory() = default;
    // A new adapter that isn't attached yet: Excel's for ExcelSaved, otherwise Word's. Never null.
    virtual std::shared_ptr<AppConnection> CreateAdapter(SavedDataCvalues kind) = 0;
};

}  // namespace krv::hosts
