#pragma once

#include "command_line.h"
#include "report.h"

namespace vdrctl {

// Carries out the commands of a file, a line each, all in this process. All lines are read and
// checked before the first is carried out. Returns the exit status.
int RunBatch(const Invocation& batch, const Report& report);

}  // namespace vdrctl
