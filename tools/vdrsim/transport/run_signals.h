#pragma once

#include <signal.h>
#include <sys/signalfd.h>

#include <optional>

#include "unique_fd.h"

namespace vdrsim {

// Holds the signals that would end or stop this process, and the end of a child, to be read one by
// one. What this process was started to ignore or to block stays so.
class RunSignals {
 public:
  // Throws StartFailure.
  RunSignals();

  // Gives the calling process back the signal mask and dispositions that this one was started with.
  // Safe after a fork.
  void Restore() const;

  int descriptor() const { return held_.get(); }
  std::optional<signalfd_siginfo> Next() const;

  // Stops this process, as its process group may be stopped by a key of the terminal, until it is
  // told to go on. Does nothing where that is ignored.
  void Stop() const;

 private:
  sigset_t originalMask_{};
  struct sigaction originalChildAction_ {};
  UniqueFd held_;
};

}  // namespace vdrsim
