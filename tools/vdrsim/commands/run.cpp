#include <memory>

#include "commands/run_command.h"
#include "commands/state_options.h"
#include "commands/subcommands.h"
#include "datapath/datapath.h"

namespace vdrsim {

namespace {

struct Options {
  RunOptions run{};
  StateOptions state{};
};

int Run(const Options& options) {
  Datapath datapath;
  const AtEnd atEnd = Prepare(options.state, datapath);
  RunCommand(options.run, datapath, atEnd);
}

}  // namespace

void AddRun(CLI::App& app, Action& action) {
  CLI::App* run = app.add_subcommand(
      "run",
      "Start COMMAND so that it, and all that it starts, finds the device nodes simulated.\n"
      "One datapath serves the whole run and is forgotten with it, unless it is saved.");
  const auto options = std::make_shared<Options>();
  AddRunOptions(*run, options->run);
  AddStateOptions(*run, options->state);
  run->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace vdrsim
