#include "benchmarks/Contest.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <ctime>
#include <numeric>
#include <random>
#include <stdexcept>

#include "common/memory/SampleBuffer.h"

namespace krv::benchmarks {
namespace {

double ElapsedNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double ProcessorNow() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

void PreTouch(std::size_t bytes) {
    SampleBuffer<char> memory(bytes);
    memory.Resize(bytes);
    std::memset(memory.Data(), 1, bytes);
    benchmark::DoNotOptimize(memory.Data());
}

void Contest::Add(std::string name, Work work, Work prepare) {
    m_contestants.push_back({std::move(name), std::move(work), std::move(prepare), {}});
}

double Contest::Measure(const Contestant& contestant) const {
    if (contestant.prepare) {
        contestant.prepare();
    }
    const auto now = m_kind == TimeKind::Processor ? ProcessorNow : ElapsedNow;
    const double start = now();
    contestant.work();
    return now() - start;
}

void Contest::RunRound(bool counts) {
    static std::minstd_rand random(1);
    std::vector<std::size_t> order(m_contestants.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::shuffle(order.begin(), order.end(), random);
    for (const std::size_t index : order) {
        const double seconds = Measure(m_contestants[index]);
        if (counts) {
            m_contestants[index].seconds.push_back(seconds);
        }
    }
}

void Contest::Run(benchmark::State& state) {
    RunRound(false);
    for (auto unused : state) {
        RunRound(true);
        state.SetIterationTime(m_contestants.front().seconds.back());
    }
    for (const Contestant& contestant : m_contestants) {
        state.counters[contestant.name + "_ms"] = Seconds(contestant.name) * 1000;
    }
}

const Contest::Contestant& Contest::Find(const std::string& name) const {
    const auto found = std::ranges::find(m_contestants, name, &Contestant::name);
    if (found == m_contestants.end()) {
        throw std::invalid_argument("no contestant " + name);
    }
    return *found;
}

double Contest::Seconds(const std::string& name) const {
    return Spread::Of(Find(name).seconds).median;
}

Spread Contest::TimeRatio(const std::string& name, const std::vector<std::string>& others) const {
    std::vector<double> ratios = Find(name).seconds;
    for (std::size_t round = 0; round < ratios.size(); ++round) {
        double sum = 0;
        for (const std::string& other : others) {
            sum += Find(other).seconds[round];
        }
        ratios[round] /= sum;
    }
    return Spread::Of(std::move(ratios));
}

}  // namespace krv::benchmarks
