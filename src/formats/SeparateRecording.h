// A recording that a process of its own opens and reads, for libraries that a damaged file can
// bring down. Not on Windows.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "formats/ReaderProcess.h"
#include "formats/Recording.h"

namespace krv::formats {

// Opens the recording in the other process, which goes with what is returned. Throws what `open`
// throws of Error and std::bad_alloc, there or here; where the process ends before its time, or
// says what can't be, Error 321 with the description for that.
[[nodiscard]] std::unique_ptr<Recording> OpenSeparately(
    const ReaderLimits& limits, const std::function<std::unique_ptr<Recording>()>& open,
    const std::string& descriptionOfDamage);

}  // namespace krv::formats
