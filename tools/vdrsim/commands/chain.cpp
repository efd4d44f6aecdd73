#include "commands/chain.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

#include "commands/run_control.h"
#include "commands/subcommands.h"
#include "record/recording_log.h"

namespace vdrsim {

namespace {

Journal::Logs OpenAll(const ChainOptions& options) {
  Journal::Logs logs;
  if (options.recording) {
    logs.push_back(std::make_unique<RecordingLog>(*options.recording, OwnForm()));
    RefuseJournal(options.journal, *options.recording);
  }
  std::ranges::move(OpenLogs(options.journal), std::back_inserter(logs));
  return logs;
}

}  // namespace

void AddChainOptions(CLI::App& subcommand, ChainOptions& options) {
  AddFaultOptions(subcommand, options.faults);
  AddJournalOptions(subcommand, options.journal);
}

Chain::Chain(const ChainOptions& options, Executor& end)
    : faults_(options.faults, end),
      journal_(faults_.link(), OpenAll(options),
               options.recording ? Journal::Keeps::Outputs : Journal::Keeps::Sizes),
      control_(journal_) {
  ControlFaults(control_, faults_);
  ControlJournal(control_, journal_);
}

void Chain::Run(const RunOptions& options, const AtEnd& atEnd) {
  RunCommand(options, control_, [&]() -> std::optional<int> {
    // All are done, whatever the others say.
    const bool isWritten = journal_.Finish();
    const auto ended = atEnd();
    const auto matched = faults_.AtEnd();
    if (!isWritten) return kUnusable;
    return ended ? ended : matched;
  });
}

}  // namespace vdrsim
