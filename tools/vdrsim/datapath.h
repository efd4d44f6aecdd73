#pragma once

#include <mutex>

#include "call.h"
#include "state.h"

namespace vdrsim {

// The simulated datapath: commands in, answers out, and no I/O of any kind, so that tests and
// fuzzers can drive it in process.
class Datapath final : public Executor {
 public:
  // Carries out one command.
  //
  // The error is ENOTTY for a code without handler, EINVAL for an input of a wrong length or a
  // reply that does not fit the capacity, EFAULT for one that can't be delivered, ENOMEM when the
  // simulation itself runs out of memory, and otherwise the handler's own.
  Answer Execute(const Call& call) noexcept override;

  const State& state() const { return state_; }

 private:
  std::mutex mutex_{};
  State state_{};
};

}  // namespace vdrsim
