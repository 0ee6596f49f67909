// Session: a live connection to an instrument, made by the discovery control and handed to the
// instrument server.
//
// The session owns the connection. A server that is given the session talks through it, and may let
// go of it and take it up again; the connection ends with Close or with the session's last
// reference.
#pragma once

#include <memory>
#include <string>

#include "suite/scpi/ScpiInstrument.h"
#include "suite/windows/SuiteObject.h"

namespace krv::suite {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Only this module's own sessions have this interface. It leads to what is behind them.
struct ISessionAccess : IUnknown {
    virtual std::shared_ptr<suite::ScpiInstrument> Connected() noexcept = 0;
    // Returns the instrument to its front panel, if it can be reached, and ends the connection for
    // all users of the session.
    virtual void Close() noexcept = 0;
};

#pragma GCC diagnostic pop

// Opens a connection to the address and identifies what is there, unless the user presses Esc
// meanwhile. Throws Error.
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> OpenSession(const std::string& address);

// The same for an address from a document: gives up after a few seconds.
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> ReopenSession(const std::string& address);

// Null for a null object and for a session of another component.
[[nodiscard]] Microsoft::WRL::ComPtr<ISessionAccess> AccessTo(IUnknown* session);

}  // namespace krv::suite

__CRT_UUID_DECL(krv::suite::ISessionAccess, 0x52e1a9c4, 0x3f27, 0x4d0b, 0x8a, 0x55, 0x6b, 0x8f,
                0x0f, 0x3c, 0x11, 0xf0)
