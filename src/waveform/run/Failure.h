// Failure: an error as a value, where the rules of a run say that it is shown rather than raised.
#pragma once

#include <new>
#include <optional>
#include <utility>

#include "common/Error.h"

namespace krv::waveform {

// Runs the work and returns the error that ended it, or nothing. Running out of memory counts as an
// error of the work; anything else goes on to the caller.
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

}  // namespace krv::waveform
