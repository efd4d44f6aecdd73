#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "commands/fault_options.h"
#include "commands/journal_options.h"
#include "commands/run_command.h"
#include "control/control.h"
#include "journal/journal.h"

namespace vdrsim {

// What may stand between the callers of a run and whatever answers them.
struct ChainOptions {
  FaultOptions faults{};
  JournalOptions journal{};
  std::optional<std::string> recording{};  // the file where the replies are kept too
};

void AddChainOptions(CLI::App& subcommand, ChainOptions& options);

// The links of one run: control, journal, faults, and the end that answers. The journal tells what a
// caller is told, so it stands before the faults.
class Chain {
 public:
  // Writes no file before the faults are understood. Throws RuleError and std::runtime_error.
  Chain(const ChainOptions& options, Executor& end);

  // For what else `vdrsim ctl` may reach.
  Control& control() { return control_; }

  // Runs the command, and ends this process as it ended unless something of the run failed by then.
  [[noreturn]] void Run(const RunOptions& options, const AtEnd& atEnd = NothingAtEnd);

 private:
  RunFaults faults_;
  Journal journal_;
  Control control_;
};

}  // namespace vdrsim
