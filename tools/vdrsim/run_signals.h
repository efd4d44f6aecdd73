#pragma once

#include <signal.h>
#include <sys/signalfd.h>

#include <optional>

#include "unique_fd.h"

namespace vdrsim {

// Holds the signals that matter to a run, to be read one by one: the end of a child and the
// requests to stop. A request to stop that this process was started to ignore stays ignored.
class RunSignals {
 public:
  // Throws StartFailure.
  RunSignals();

  // Gives the calling process back the signal mask and dispositions that this one was started with.
  void Restore() const;

  int descriptor() const { return held_.get(); }
  std::optional<signalfd_siginfo> Next() const;

 private:
  sigset_t originalMask_{};
  struct sigaction originalChildAction_ {};
  UniqueFd held_;
};

}  // namespace vdrsim
