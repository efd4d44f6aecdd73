#include "rounds.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

namespace rounds {

namespace {

using Work = std::function<void()>;

// The times of one round, in seconds a call.
struct Times {
  double library;
  double floor;
};

double SecondsEach(int calls, const Work& work) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  for (int call = 0; call < calls; ++call) work();
  return std::chrono::duration<double>(Clock::now() - start).count() / calls;
}

// Rounds long enough for the clock, and short enough that whatever else the machine does meets
// both sides of a round alike.
int CallsOfRound(const Work& work) {
  constexpr double kSeconds = 500e-6;
  SecondsEach(2, work);
  int calls = 1;
  while (calls < 1000000 && SecondsEach(calls, work) * calls < kSeconds) calls *= 2;
  return calls;
}

double Quantile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  const double place = part * static_cast<double>(values.size() - 1);
  return values[static_cast<std::size_t>(std::lround(place))];
}

// Leaves the medians with the benchmark: of the times, and of the ratios of the rounds.
void Summarize(benchmark::State& state, const std::vector<Times>& times) {
  std::vector<double> ratios;
  std::vector<double> library;
  std::vector<double> floor;
  for (const Times& round : times) {
    ratios.push_back(round.library / round.floor);
    library.push_back(round.library * 1e9);
    floor.push_back(round.floor * 1e9);
  }
  state.counters["ratio"] = Quantile(ratios, 0.5);
  state.counters["low"] = Quantile(ratios, 0.25);
  state.counters["high"] = Quantile(ratios, 0.75);
  state.counters["library_ns"] = Quantile(library, 0.5);
  state.counters["floor_ns"] = Quantile(floor, 0.5);
}

// Times the two in turn, the one that starts changing from round to round.
void Run(benchmark::State& state, const Case& subject, int calls) {
  if (subject.prepare) subject.prepare();
  if (calls == 0) calls = CallsOfRound(subject.floor);
  SecondsEach(calls, subject.floor);
  SecondsEach(calls, subject.library);
  std::vector<Times> times;
  bool libraryFirst = false;
  for ([[maybe_unused]] auto round : state) {
    libraryFirst = !libraryFirst;
    Times now{};
    if (libraryFirst) now.library = SecondsEach(calls, subject.library);
    now.floor = SecondsEach(calls, subject.floor);
    if (!libraryFirst) now.library = SecondsEach(calls, subject.library);
    state.SetIterationTime(now.library);
    times.push_back(now);
  }
  Summarize(state, times);
  state.counters["records"] = subject.records;
  state.counters["target"] = subject.target;
  state.SetLabel(subject.device);
}

}  // namespace

void Register(const Case& subject, int calls) {
  const std::string name =
      subject.name + "/" + std::to_string(subject.records) + "/" + subject.device;
  benchmark::RegisterBenchmark(
      name.c_str(), [subject, calls](benchmark::State& state) { Run(state, subject, calls); })
      ->Iterations(kRounds)
      ->UseManualTime();
}

}  // namespace rounds
