// AppConnection: the host adapter, through which everything goes that depends on the application
// the control sits in.
//
// The control holds one adapter or none, and shares it with its dialogs. Members come in the
// interface's order and keep its names. All run on the host's user-interface thread.
//
// A member that the host can't fulfil changes nothing further and raises nothing, unless it says
// otherwise. Members that a kind of host has no use for are refused there with Error 0x80040005.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "common/PropertyBag.h"
#include "hosts/HostedControl.h"
#include "ports/desktop/ControlSurface.h"
#include "ports/desktop/FormScreen.h"
#include "ports/office/Excel.h"
#include "ports/suite/KRVServer.h"

namespace krv::hosts {

// The host in which a control's properties were last saved; also says which kind an adapter is.
enum SavedDataCvalues : std::int32_t { NoneSaved = 0, ExcelSaved = 1, WordSaved = 2 };

class AppConnection {
 public:
    virtual ~AppConnection() = default;

    virtual SavedDataCvalues SavedDataCValue() = 0;

    // A timed transfer of measured data into the document: returns whether one was started.
    virtual bool DoDataTransfer(bool immed, DateValue startDate, std::int32_t num_samples,
                                double intervalInSeconds) = 0;

    // Fetches the instrument's screen image and places it in the document or in a file. The caller
    // keeps the adapter meanwhile. Throws Error.
    virtual void DoPictureTransfer() = 0;

    // Attaches to the host, also while that has no document open; without an application (null) the
    // adapter finds it through the control. Returns false when the application isn't of this
    // adapter's kind or can't be attached to.
    virtual bool Init(const std::shared_ptr<ports::HostApplication>& app,
                      const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
                      ports::DeviceContext m_HDC) = 0;

    // The host application object; null when the adapter has none.
    virtual std::shared_ptr<ports::HostApplication> hostApp() = 0;

    // Hands the saved data transfer settings to the host.
    virtual void TransferDataToApp() = 0;

    // Shows the connected look, with model, address and computer in the tool tip, or the
    // unconnected one when the server has no session.
    virtual void UpdateConnectedIconAndTooltip(const std::string& hostName) = 0;

    // Enables the buttons that the connected instrument can serve; takes a ConnectionType.
    virtual void EnableToolbarButtons(std::int16_t ConnectType) = 0;

    // Hooks for a repeated and a single measurement mode.
    virtual void EnableRepeatMeaureButtons() = 0;
    virtual void EnableSingleMeaureButtons() = 0;

    // Shows a text in the host's status bar, when that is displayed. An empty one gives the bar
    // back to the host.
    virtual void UpdateStatus(const std::string& msg) = 0;

    virtual void SetBusyCursor(bool val) = 0;

    virtual void WriteProperties(PropertyBag& propBag) = 0;
    virtual void ReadProperties(PropertyBag& propBag) = 0;

    // Opens the help that belongs to the add-in.
    virtual void DoHelp(ports::WindowHandle topHwnd, std::int32_t contextID) = 0;

    // Puts every button into its unconnected state.
    virtual void SetInitialToolbarState() = 0;

    // A repeated transfer is running: remembered for when the document is activated again.
    virtual void SetInRepeatDataTransfer(bool val) = 0;
};

}  // namespace krv::hosts
