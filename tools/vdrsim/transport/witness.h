#pragma once

#include <sys/types.h>

#include "status_file.h"
#include "unique_fd.h"

namespace vdrsim {

// A process that only stands beside this one in its process group. A signal that it got too was
// meant for the group, and not for this process alone.
class Witness {
 public:
  // Blocks all signals in the witness, so that they stay to be seen. Without it, for want of a
  // process or memory, every signal counts as meant for this process alone.
  Witness();

  // Tells whether `signal` came since the last time that one was asked for, and forgets it.
  bool Got(int signal) const;

 private:
  UniqueFd forget_{};
  StatusFile status_{};
};

}  // namespace vdrsim
