#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "command.h"
#include "state.h"

namespace vdrsim {

// The simulated datapath: commands in, answers out, and no I/O of any kind, so that tests and
// fuzzers can drive it in process. Not for use by several threads at once.
class Datapath {
 public:
  // Tells whether `code` is a command that the simulation answers.
  bool Handles(uint32_t code) const;

  // Carries out one command. `capacity` is the room that the caller has for the reply, in bytes.
  //
  // The error is ENOTTY for a code without handler, EINVAL for an input of a wrong length or a
  // reply that does not fit the capacity, ENOMEM when the simulation itself runs out of memory, and
  // otherwise the handler's own. An answer with an error has no reply.
  Answer Handle(uint32_t code, std::span<const std::byte> input, uint32_t capacity) noexcept;

  const State& state() const { return state_; }

 private:
  State state_{};
};

}  // namespace vdrsim
