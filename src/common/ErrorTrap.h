// The two error traps: one gives the error that ended a piece of work as a value, for rules that
// show it; the other ends the work quietly. A trap stands where a procedure's rules name one,
// nowhere else.
//
// Running out of memory counts as an error of the work. Any other exception goes on to the caller.
#pragma once

#include <new>
#include <optional>
#include <utility>

#include "common/Error.h"

namespace krv {

// Runs the work. Returns the error that ended it, or nothing when it came to its end.
template <class Work>
[[nodiscard]] std::optional<Error> FailureOf(Work&& work) {
    try {
        std::forward<Work>(work)();
        return std::nullopt;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error(ErrorNumber::OutOfMemory);
    }
}

// Runs the work and passes over the error that ends it. Returns whether it came to its end.
template <class Work>
bool TrapErrors(Work&& work) {
    return !FailureOf(std::forward<Work>(work));
}

}  // namespace krv
