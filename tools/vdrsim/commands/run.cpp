#include <memory>

#include "commands/chain.h"
#include "commands/run_command.h"
#include "commands/run_control.h"
#include "commands/shell.h"
#include "commands/state_options.h"
#include "commands/subcommands.h"
#include "datapath/datapath.h"

namespace vdrsim {

namespace {

struct Options {
  RunOptions run{};
  StateOptions state{};
  ChainOptions chain{};
  bool isShell = false;
};

int Run(Options options) {
  if (options.isShell) ChooseShell(options.run);
  Datapath datapath;
  const AtEnd save = Prepare(options.state, datapath);
  Chain chain(options.chain, datapath);
  ControlState(chain.control(), datapath);
  chain.Run(options.run, save);
}

}  // namespace

void AddRun(CLI::App& app, Action& action) {
  CLI::App* run = app.add_subcommand(
      "run",
      "Start COMMAND so that it, and all that it starts, finds the device nodes simulated.\n"
      "One datapath serves the whole run and is forgotten with it, unless it is saved.");
  const auto options = std::make_shared<Options>();
  AddStateOptions(*run, options->state);
  AddChainOptions(*run, options->chain);
  AddRunOptions(*run, options->run);
  AddShellOption(*run, options->isShell);
  run->callback([&action, options] {
    if (!options->isShell && options->run.command.empty()) throw CLI::RequiredError("COMMAND");
    action = [options] { return Run(*options); };
  });
}

}  // namespace vdrsim
