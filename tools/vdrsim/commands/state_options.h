#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <string>

#include "commands/run_command.h"
#include "datapath/datapath.h"

namespace vdrsim {

// Where the state of a run comes from and goes to; nowhere when empty.
struct StateOptions {
  std::string load{};
  std::string save{};
};

// Returns the options.
std::array<CLI::Option*, 2> AddStateOptions(CLI::App& subcommand, StateOptions& options);

// Loads what is to be loaded, and returns what saves when the run is over. Throws StateFailure.
AtEnd Prepare(const StateOptions& options, Datapath& datapath);

}  // namespace vdrsim
