// AppConnection: the host adapter, through which everything goes that depends on the application
// the control sits in.
#pragma once

#include <cstdint>
#include <memory>

#include "ports/desktop/FormScreen.h"
#include "ports/office/Excel.h"

namespace krv {

// The host in which a control's properties were last saved; also says which kind an adapter is.
enum SavedDataCvalues : std::int32_t { NoneSaved = 0, ExcelSaved = 1, WordSaved = 2 };

class AppConnection {
 public:
    virtual ~AppConnection() = default;
    virtual SavedDataCvalues SavedDataCValue() = 0;
    // The host application object; null when the adapter has none.
    virtual std::shared_ptr<office::HostApplication> hostApp() = 0;
    virtual void DoHelp(desktop::WindowHandle topHwnd, std::int32_t contextID) = 0;
};

}  // namespace krv
