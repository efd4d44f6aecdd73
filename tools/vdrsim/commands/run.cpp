#include <memory>

#include "commands/run_command.h"
#include "commands/subcommands.h"
#include "datapath/datapath.h"

namespace vdrsim {

namespace {

int Run(const RunOptions& options) {
  Datapath datapath;
  RunCommand(options, datapath);
}

}  // namespace

void AddRun(CLI::App& app, Action& action) {
  CLI::App* run = app.add_subcommand(
      "run",
      "Start COMMAND so that it, and all that it starts, finds the device nodes simulated.\n"
      "One datapath serves the whole run and is forgotten with it.");
  const auto options = std::make_shared<RunOptions>();
  AddRunOptions(*run, *options);
  run->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace vdrsim
