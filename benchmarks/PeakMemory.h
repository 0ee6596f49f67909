// How much resident memory a piece of work takes at its peak.
#pragma once

#include <cstdint>
#include <functional>

namespace krv::benchmarks {

// Called where the measured part of the work begins: what was taken before doesn't count.
using PeakStart = std::function<void()>;

// Runs the work in a process of its own; returns by how many bytes its resident memory grew, at
// most, after the start. Throws std::runtime_error when the work failed.
[[nodiscard]] std::int64_t PeakGrowth(const std::function<void(const PeakStart& start)>& work);

}  // namespace krv::benchmarks
