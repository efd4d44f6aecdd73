#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <set>
#include <utility>

#include "intercepted_calls.h"
#include "launcher.h"
#include "run_signals.h"

namespace vdrsim {

// Accompanies a run from the start of its command to the end of the last process that it started.
class Supervisor {
 public:
  // The children that this process had before the run are none of its business.
  Supervisor(const Launched& launched, const RunSignals& signals, InterceptedCalls& calls,
             std::set<pid_t> strangers)
      : launched_(launched), signals_(signals), calls_(calls), strangers_(std::move(strangers)) {}

  // Answers calls until the run is over, and returns the wait status of the command.
  int Run();

 private:
  void TakeSignals();
  void Reap();
  void EndStragglers();
  void AwaitExits();

  const Launched& launched_;
  const RunSignals& signals_;
  InterceptedCalls& calls_;
  std::set<pid_t> strangers_;

  bool commandEnded_ = false;
  int commandStatus_ = 0;
  bool stopRequested_ = false;
  std::set<pid_t> askedToEnd_{};
  std::optional<std::chrono::steady_clock::time_point> patienceEnds_{};
};

// Lists the children of the calling process, those that ended and were not waited for included.
std::set<pid_t> Children();

}  // namespace vdrsim
