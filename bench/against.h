// Times a piece of work against a baseline in the same run, so that the ratio holds on a machine
// whose speed drifts.
#pragma once

#include <algorithm>
#include <chrono>
#include <limits>

#include <benchmark/benchmark.h>

namespace bench {

/// Runs both in turn; reports our time, the baseline's ("baseline_ns") and their "ratio", each from
/// the fastest round. Register with `->UseManualTime()`.
/// @param work  how many operations one call of either does, for the time per operation "op_ns".
template <class Ours, class Baseline>
void against(benchmark::State& state, Ours ours, Baseline baseline, double work = 1.0) {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    const auto timed = [](auto& call) {
        const auto begin = Clock::now();
        call();
        return Seconds(Clock::now() - begin).count();
    };
    double fastestOurs = std::numeric_limits<double>::max();
    double fastestBaseline = fastestOurs;
    for ([[maybe_unused]] auto round : state) {
        const double time = timed(ours);
        state.SetIterationTime(time);
        fastestOurs = std::min(fastestOurs, time);
        fastestBaseline = std::min(fastestBaseline, timed(baseline));
    }
    state.counters["op_ns"] = fastestOurs * 1e9 / work;
    state.counters["baseline_ns"] = fastestBaseline * 1e9 / work;
    state.counters["ratio"] = fastestOurs / fastestBaseline;
}

} // namespace bench
