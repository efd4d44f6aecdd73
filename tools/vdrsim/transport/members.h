#pragma once

#include <sys/types.h>

#include <cstdint>
#include <vector>

#include "unique_fd.h"

namespace vdrsim {

// Finds the processes of the run among the children of this process. Others may be there too: those
// that it had before the run began, and theirs. The kernel knows: to be in the run is to be under
// one seccomp filter more than this process.
class Members {
 public:
  // Throws StartFailure.
  Members();

  // The members that are children of this process, those that ended and were not waited for
  // included. Not complete when one could not be looked at for want of a descriptor or of memory.
  struct Found {
    std::vector<pid_t> processes{};
    bool isComplete = true;
  };
  Found Find() const;

 private:
  UniqueFd children_;
  uint64_t ownFilters_ = 0;
};

}  // namespace vdrsim
