// Times a piece of work against a baseline in the same run, so that the ratio holds on a machine
// whose speed drifts.
#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <limits>

#include <benchmark/benchmark.h>

namespace bench {

/// The least time that rounds of a piece of work took, in seconds.
class Fastest {
public:
    template <class Call>
    double time(Call& call) {
        using Clock = std::chrono::steady_clock;
        const auto begin = Clock::now();
        const std::clock_t processorBegin = std::clock();
        call();
        const auto processor = static_cast<double>(std::clock() - processorBegin);
        const double elapsed = std::chrono::duration<double>(Clock::now() - begin).count();
        elapsed_ = std::min(elapsed_, elapsed);
        processor_ = std::min(processor_, processor / CLOCKS_PER_SEC);
        return elapsed;
    }
    double elapsed() const { return elapsed_; }
    /// Of all threads, without waiting for disks and for others on the machine.
    double processor() const { return processor_; }

private:
    double elapsed_ = std::numeric_limits<double>::max();
    double processor_ = elapsed_;
};

/// Runs both in turn; reports our time, the baseline's ("baseline_ns") and their "ratio", each from
/// the fastest round, and the ratio of their processor times ("cpu_ratio"). Register with
/// `->UseManualTime()`.
/// @param work  how many operations one call of either does, for the time per operation "op_ns".
template <class Ours, class Baseline>
void against(benchmark::State& state, Ours ours, Baseline baseline, double work = 1.0) {
    Fastest fastest;
    Fastest fastestBaseline;
    for ([[maybe_unused]] auto round : state) {
        state.SetIterationTime(fastest.time(ours));
        fastestBaseline.time(baseline);
    }
    state.counters["op_ns"] = fastest.elapsed() * 1e9 / work;
    state.counters["baseline_ns"] = fastestBaseline.elapsed() * 1e9 / work;
    state.counters["ratio"] = fastest.elapsed() / fastestBaseline.elapsed();
    state.counters["cpu_ratio"] = fastest.processor() / fastestBaseline.processor();
}

} // namespace bench
