// ProcedureGuard: the one edge between the system's callbacks and this code. The system's frames
// can't be unwound, so that no exception may leave a procedure that it calls.
#pragma once

#include <windows.h>

#include <utility>

namespace krv::windows {

// Tells the debugger of the exception that is being handled.
void NoteStrayException() noexcept;

// The body's result. An exception of the body ends here: the message counts as handled, what it
// was about stays as it is, and the result is 0.
template <class Body>
LRESULT GuardProcedure(Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        NoteStrayException();
        return 0;
    }
}

}  // namespace krv::windows
