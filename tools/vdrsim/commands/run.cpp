#include <memory>

#include "commands/fault_options.h"
#include "commands/journal_options.h"
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
  FaultOptions faults{};
  JournalOptions journal{};
  bool isShell = false;
};

int Run(Options options) {
  if (options.isShell) ChooseShell(options.run);
  Datapath datapath;
  const AtEnd save = Prepare(options.state, datapath);
  RunFaults faults(options.faults, datapath);
  Journal journal(faults.link(), OpenLogs(options.journal));
  Control control(journal);
  ControlFaults(control, faults);
  ControlJournal(control, journal);
  ControlState(control, datapath);
  RunCommand(options.run, control, [&]() -> std::optional<int> {
    // All are done, whatever the others say.
    const bool isWritten = journal.Finish();
    const auto saved = save();
    const auto matched = faults.AtEnd();
    if (!isWritten) return kUnusable;
    return saved ? saved : matched;
  });
}

}  // namespace

void AddRun(CLI::App& app, Action& action) {
  CLI::App* run = app.add_subcommand(
      "run",
      "Start COMMAND so that it, and all that it starts, finds the device nodes simulated.\n"
      "One datapath serves the whole run and is forgotten with it, unless it is saved.");
  const auto options = std::make_shared<Options>();
  AddStateOptions(*run, options->state);
  AddFaultOptions(*run, options->faults);
  AddJournalOptions(*run, options->journal);
  AddRunOptions(*run, options->run);
  AddShellOption(*run, options->isShell);
  run->callback([&action, options] {
    if (!options->isShell && options->run.command.empty()) throw CLI::RequiredError("COMMAND");
    action = [options] { return Run(*options); };
  });
}

}  // namespace vdrsim
