// What every office application offers to the adapter that sits in it, besides its documents.
// Every operation throws Error with the application's own description when it refuses.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ports/office/CommandBar.h"

namespace krv::ports {

class AddIn {
 public:
    virtual ~AddIn() = default;
    virtual std::string Name() = 0;
    // The folder that holds it, without a separator at the end.
    virtual std::string Path() = 0;
    virtual void SetInstalled(bool installed) = 0;
};

class OfficeHost {
 public:
    virtual ~OfficeHost() = default;
    // Throws Error when there is no command bar of this name.
    virtual std::shared_ptr<CommandBar> CommandBarByName(const std::string& name) = 0;
    // In the application's order.
    virtual std::vector<std::shared_ptr<AddIn>> AddIns() = 0;
    virtual bool IsStatusBarDisplayed() = 0;
    // An empty text gives the status bar back to the application.
    virtual void SetStatusBarText(const std::string& text) = 0;
    // The application's wait cursor, or its usual one.
    virtual void SetBusyCursor(bool isBusy) = 0;
};

}  // namespace krv::ports
