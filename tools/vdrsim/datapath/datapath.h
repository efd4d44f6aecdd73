#pragma once

#include <cstddef>
#include <mutex>

#include "call.h"
#include "datapath/state.h"

namespace vdrsim {

// The end of the chain: the simulated datapath. Commands in, answers out, and no I/O of any kind, so
// that tests and fuzzers can drive it in process.
class Datapath final : public Executor {
 public:
  // Carries out one command.
  //
  // The error is ENOTTY for a code without handler, EINVAL for an input of a wrong length or a
  // reply that does not fit the capacity, EFAULT for a command that would change something and
  // whose reply can't be delivered, ENOMEM when the simulation itself runs out of memory, and
  // otherwise the handler's own.
  Answer Execute(const Call& call) noexcept override;

  // A snapshot of all that is remembered.
  State state() const;

  // Takes `state` in place of all that is remembered, between two commands. Lists that are being
  // delivered stay what they are.
  void Replace(State state);

 private:
  Answer Carry(const Call& call, size_t request);

  mutable std::mutex mutex_{};
  State state_{};
};

}  // namespace vdrsim
