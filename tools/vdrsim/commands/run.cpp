#include <memory>

#include "commands/journal_options.h"
#include "commands/run_command.h"
#include "commands/state_options.h"
#include "commands/subcommands.h"
#include "datapath/datapath.h"

namespace vdrsim {

namespace {

struct Options {
  RunOptions run{};
  StateOptions state{};
  JournalOptions journal{};
};

int Run(const Options& options) {
  Datapath datapath;
  const AtEnd save = Prepare(options.state, datapath);
  Journal journal(datapath, OpenLogs(options.journal));
  RunCommand(options.run, journal, [&] {
    // Both are done, whatever the other says.
    const bool isWritten = journal.Finish();
    const auto status = save();
    return isWritten ? status : kUnusable;
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
  AddJournalOptions(*run, options->journal);
  AddRunOptions(*run, options->run);
  run->callback([&action, options] { action = [options] { return Run(*options); }; });
}

}  // namespace vdrsim
