// Procedures that the adapters and the control share. They hold no state.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ports/desktop/Process.h"
#include "ports/office/OfficeHost.h"
#include "ports/office/WordHost.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::hosts {

// Puts the buttons of the host's command bar into the unconnected state. Stops at the host's first
// Error and throws it: what is set stays set.
void SetExcelInitialToolbarState(ports::OfficeHost& excel);

// The template that carries the toolbar in Word, in upper case.
inline constexpr const char* WordTemplateName = "KRV.DOT";

// Marks the template as installed, by whatever case its name is written in, so that Word keeps it
// loaded. Stops at the host's first Error and throws it.
void CheckWordTemplate(ports::OfficeHost& word);

// Checks the template, then does the same as for Excel.
void SetWordInitialToolbarState(ports::OfficeHost& word);

// Carries out a change of Word's command bars, after which the templates that Word had no changes
// of have none as before: Word doesn't ask its user at the end whether to save a toolbar's look.
// Throws the change's Error, and none of its own.
void ChangeUnnoticed(ports::WordHost& word, const std::function<void()>& change);

// The full name of the temporary metafile for screen images: one a process, used again for each
// image. A temporary folder that is too long for the system's buffer counts as none.
[[nodiscard]] std::string TemporaryPictureFileName(ports::Process& process);

// The session that the server talks to its instrument through, by which all commands tell whether
// one is connected: null when there is none, when its connection is gone, and when the server can't
// say. Never fails.
[[nodiscard]] std::shared_ptr<ports::IoSession> LiveSession(ports::InstrumentServer& server);

// Ends an exchange by returning the instrument to its front panel. Does nothing without a session
// (null) and with one whose connection is gone, and never fails: not every session can.
void ReturnToLocal(const std::shared_ptr<ports::IoSession>& session);

// The same for the instrument that the server is connected to. Never fails.
void ReturnInstrumentToLocal(ports::InstrumentServer& server);

// Whether the server talks to its instrument over a serial (RS-232) connection. Without a session,
// and with one that can't answer, it doesn't. Never fails.
[[nodiscard]] bool IsSessionSerial(ports::InstrumentServer& server);

}  // namespace krv::hosts
