#ifndef MIRN_BENCH_SIDE_BY_SIDE_H
#define MIRN_BENCH_SIDE_BY_SIDE_H

#include <benchmark/benchmark.h>

#include <boost/chrono/duration.hpp>
#include <boost/chrono/thread_clock.hpp>

/// Time of `work` on `Clock`, in seconds.
template <class Clock, class Work>
double secondsOf(const Work& work) {
  const auto start = Clock::now();
  work();
  return boost::chrono::duration<double>(Clock::now() - start).count();
}

/// Measures `subject` in turn with its floor: the part of the work that the subject cannot do without, or
/// that is not ours. Both suffer alike from other load on the machine. For benchmarks with `UseManualTime`,
/// whose time is that of the subject. Beside it stand
///
/// - `ratio`: the subject's time as a multiple of the floor's,
/// - `own`: what remains without the floor, in seconds.
///
/// The clock is the processor time of this thread, unless the work is spread over several.
template <class Clock = boost::chrono::thread_clock, class Subject, class Floor>
void runBesideFloor(benchmark::State& state, const Subject& subject, const Floor& floor) {
  double subjectTime = 0;
  double floorTime = 0;
  for (auto _ : state) {
    const double seconds = secondsOf<Clock>(subject);
    state.SetIterationTime(seconds);
    subjectTime += seconds;
    floorTime += secondsOf<Clock>(floor);
  }
  state.counters["ratio"] = subjectTime / floorTime;
  state.counters["own"] = benchmark::Counter(subjectTime - floorTime, benchmark::Counter::kAvgIterations);
}

#endif
