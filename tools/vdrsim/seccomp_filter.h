#pragma once

#include <linux/filter.h>

#include <vector>

namespace vdrsim {

// Makes the filter that holds up open, openat, openat2 and ioctl for a supervisor and lets every
// other call pass. All ioctl calls are held up, since a caller may send any code.
//
// Throws StartFailure where the kernel or a container does not let a process be supervised.
std::vector<sock_filter> SupervisedCallsFilter();

// Puts the calling thread, and all that it will start, under the filter. Returns the listener on
// which the calls arrive, or -1 with errno.
int InstallFilter(std::vector<sock_filter>& filter);

// Says in one line why the filter could not be installed. Throws StartFailure always.
[[noreturn]] void FailFilter(int error);

}  // namespace vdrsim
