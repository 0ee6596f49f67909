// Contest: pieces of work measured against each other in one process and one run.
//
// Every round runs all contestants once, in a new random order, so that whatever else the machine
// does falls on all of them alike; a ratio is taken within its round. A first round that touches
// memory and warms the file cache doesn't count. Single-threaded work is measured in processor time
// of the process, page faults included: another program's turn on the core is not this work's cost.
// Work that waits for other threads is measured in elapsed time.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/TargetTable.h"

namespace krv::benchmarks {

// Takes that much memory, writes it and gives it back: what the system hands out next needn't first
// be fetched from wherever free memory goes, a virtual machine's host for one.
void PreTouch(std::size_t bytes);

enum class TimeKind { Processor, Elapsed };

class Contest {
 public:
    // The median of this many rounds is taken.
    static constexpr int Rounds = 9;

    using Work = std::function<void()>;

    explicit Contest(TimeKind kind = TimeKind::Processor) noexcept : m_kind(kind) {}

    // `prepare` runs in front of each turn and isn't measured. The first contestant's time is what
    // the benchmark reports.
    void Add(std::string name, Work work, Work prepare = {});

    // Runs the rounds as the benchmark's iterations.
    void Run(benchmark::State& state);

    // Medians.
    [[nodiscard]] double Seconds(const std::string& name) const;
    // Time of the first over the time of the sum of the others, round by round.
    [[nodiscard]] Spread TimeRatio(const std::string& name,
                                   const std::vector<std::string>& others) const;
    [[nodiscard]] Spread TimeRatio(const std::string& name, const std::string& other) const {
        return TimeRatio(name, std::vector{other});
    }
    // The same as speeds: above 1 where the first is the faster.
    [[nodiscard]] Spread SpeedRatio(const std::string& name, const std::string& other) const {
        return TimeRatio(other, name);
    }

 private:
    struct Contestant {
        std::string name;
        Work work;
        Work prepare;
        std::vector<double> seconds;
    };
    [[nodiscard]] double Measure(const Contestant& contestant) const;
    [[nodiscard]] const Contestant& Find(const std::string& name) const;
    void RunRound(bool counts);

    TimeKind m_kind;
    std::vector<Contestant> m_contestants;
};

}  // namespace krv::benchmarks
