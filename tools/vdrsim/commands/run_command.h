#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "call.h"

namespace vdrsim {

// How a command is run under supervision, for every subcommand that does.
struct RunOptions {
  std::vector<std::string> command{};
  bool everyOpen = false;
  bool besideRealDevice = false;
};

void AddRunOptions(CLI::App& subcommand, RunOptions& options);

// To be called where the command stands behind another argument: the `--` between the two comes with
// the command, and so do options that stand there. Throws CLI::ParseError for those, and when there is
// nothing else.
void DropSeparator(RunOptions& options);

// What is left to do when the run is over. Returns the exit status to end with instead of that of the
// command, if any.
using AtEnd = std::function<std::optional<int>()>;
inline std::optional<int> NothingAtEnd() { return std::nullopt; }

// Runs the command, whose device commands `executor` answers, and ends this process as it ended.
// Throws StartFailure when the run can't begin.
[[noreturn]] void RunCommand(const RunOptions& options, Executor& executor, const AtEnd& atEnd);

}  // namespace vdrsim
