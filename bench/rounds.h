#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <vector>

// Two ways to do the same work, timed side by side.
namespace rounds {

// One row of the table: a benchmark of kRounds rounds.
struct Row {
  std::string name;    // the function measured
  std::string device;  // what its device does
  double records = 0;  // in the reply
  double target = 0;   // the highest ratio that is wanted
};

inline constexpr int kRounds = 61;

// The times of one round, in seconds a call.
struct Times {
  double library;
  double floor;
};

void Register(const Row& row, void (*run)(benchmark::State& state, const void* subject),
              const void* subject);

// Leaves the medians with the benchmark: of the times, and of the ratios of the rounds.
void Summarize(benchmark::State& state, const std::vector<Times>& times);

template <typename Work>
double SecondsEach(int calls, Work& work) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  for (int call = 0; call < calls; ++call) work();
  return std::chrono::duration<double>(Clock::now() - start).count() / calls;
}

// Rounds long enough for the clock, and short enough that whatever else the machine does meets
// both sides of a round alike.
template <typename Work>
int CallsOfRound(Work& work) {
  constexpr double kSeconds = 500e-6;
  SecondsEach(2, work);
  int calls = 1;
  while (calls < 1000000 && SecondsEach(calls, work) * calls < kSeconds) calls *= 2;
  return calls;
}

// Times the two in turn, the one that starts changing from round to round.
template <typename Library, typename Floor>
void Compare(benchmark::State& state, Library library, Floor floor) {
  const int calls = CallsOfRound(floor);
  SecondsEach(calls, library);
  std::vector<Times> times;
  bool libraryFirst = false;
  for ([[maybe_unused]] auto round : state) {
    libraryFirst = !libraryFirst;
    Times now{};
    if (libraryFirst) now.library = SecondsEach(calls, library);
    now.floor = SecondsEach(calls, floor);
    if (!libraryFirst) now.library = SecondsEach(calls, library);
    state.SetIterationTime(now.library);
    times.push_back(now);
  }
  Summarize(state, times);
}

}  // namespace rounds
