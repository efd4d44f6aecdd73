#pragma once

#include "command_line.h"
#include "output/presentation.h"
#include "report.h"

namespace vdrctl {

// Carries out a command again and again until it fails or a signal ends it. On a terminal each turn
// replaces the one before, on the screen that programs have for themselves; elsewhere what the turns
// print follows one another. Returns the exit status.
int Watch(const Invocation& invocation, Presentation presentation, const Report& report);

}  // namespace vdrctl
