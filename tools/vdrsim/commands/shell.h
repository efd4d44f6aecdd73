#pragma once

#include <CLI/CLI.hpp>

#include "commands/run_command.h"

namespace vdrsim {

// Lets `--shell` stand in place of a command. To be called behind AddRunOptions.
void AddShellOption(CLI::App& subcommand, bool& isShell);

// Makes the person's shell the command, in which the tools of this build are found, and tells how to
// leave it.
void ChooseShell(RunOptions& options);

}  // namespace vdrsim
