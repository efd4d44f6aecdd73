#include "rounds.h"

#include <algorithm>
#include <cmath>

namespace rounds {

namespace {

double Quantile(std::vector<double> values, double part) {
  std::sort(values.begin(), values.end());
  const double place = part * static_cast<double>(values.size() - 1);
  return values[static_cast<std::size_t>(std::lround(place))];
}

}  // namespace

void Register(const Row& row, void (*run)(benchmark::State& state, const void* subject),
              const void* subject) {
  const std::string name =
      row.name + "/" + std::to_string(static_cast<int>(row.records)) + "/" + row.device;
  benchmark::RegisterBenchmark(name.c_str(),
                               [row, run, subject](benchmark::State& state) {
                                 run(state, subject);
                                 state.counters["records"] = row.records;
                                 state.counters["target"] = row.target;
                                 state.SetLabel(row.device);
                               })
      ->Iterations(kRounds)
      ->UseManualTime();
}

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

}  // namespace rounds
