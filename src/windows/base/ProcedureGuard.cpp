#include "windows/base/ProcedureGuard.h"

#include <exception>

namespace krv::windows {

void NoteStrayException() noexcept {
    try {
        throw;
    } catch (const std::exception& failure) {
        OutputDebugStringA("An exception in a window procedure: ");
        OutputDebugStringA(failure.what());
        OutputDebugStringA("\n");
    } catch (...) {
        OutputDebugStringA("An unknown exception in a window procedure.\n");
    }
}

}  // namespace krv::windows
