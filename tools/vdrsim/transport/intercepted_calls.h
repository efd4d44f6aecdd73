#pragma once

#include "call.h"
#include "device_nodes.h"
#include "held_up_call.h"

namespace vdrsim {

// Answers the system calls of the run that the kernel holds up for this process: those that open or
// look at a device node, and ioctl calls on what was opened so. Every other call goes on in the
// kernel as if nobody had looked. For use by several threads at once.
class InterceptedCalls {
 public:
  InterceptedCalls(const DeviceNodes& nodes, Executor& executor)
      : nodes_(nodes), executor_(executor) {}

  // Answers a call that was received; it does not wait any more afterwards.
  void Answer(HeldUpCall& call) const noexcept;

 private:
  const DeviceNodes& nodes_;
  Executor& executor_;
};

}  // namespace vdrsim
