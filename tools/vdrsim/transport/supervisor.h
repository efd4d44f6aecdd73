#pragma once

#include <sys/signalfd.h>
#include <sys/types.h>

#include <chrono>
#include <optional>
#include <set>

#include "launcher.h"
#include "members.h"
#include "run_signals.h"
#include "witness.h"
#include "workers.h"

namespace vdrsim {

// Accompanies a run from the start of its command to the end of the last process that it started.
class Supervisor {
 public:
  Supervisor(const Launched& launched, const RunSignals& signals, const Witness& witness,
             const Members& members, Workers& workers)
      : launched_(launched),
        signals_(signals),
        witness_(witness),
        members_(members),
        workers_(workers) {}

  // Returns the wait status of the command when the run is over.
  int Run();

 private:
  using Clock = std::chrono::steady_clock;

  void Wait();
  int Patience() const;
  void TakeSignals();
  void TakeSignal(const signalfd_siginfo& signal);
  bool ReachedCommand(int signal) const;
  void Reap();
  void NoteEnd(int status);
  bool IsOver();
  void EndStragglers(const std::vector<pid_t>& stragglers);
  void Announce();

  const Launched& launched_;
  const RunSignals& signals_;
  const Witness& witness_;
  const Members& members_;
  Workers& workers_;

  bool callsMayCome_ = true;
  bool workersWantLook_ = false;
  int commandStatus_ = 0;
  std::optional<Clock::time_point> commandEnded_{};
  std::set<int> stopSignals_{};
  bool stopRequested_ = false;
  bool isAnnounced_ = false;
  std::set<pid_t> askedToEnd_{};
  std::optional<Clock::time_point> patienceEnds_{};
};

}  // namespace vdrsim
