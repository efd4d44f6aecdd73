#pragma once

#include <string>

namespace vdrctl {

// Says what an operator may do about a command that failed with `error` because the device node
// could not be opened; empty when that was not the reason.
std::string DeviceHint(int error);

}  // namespace vdrctl
