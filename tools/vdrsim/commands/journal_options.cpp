#include "commands/journal_options.h"

#include <memory>
#include <stdexcept>

#include "journal/journal_form.h"
#include "journal/queued_log.h"
#include "journal/target.h"
#include "journal/trace_form.h"

namespace vdrsim {

namespace {

Target OpenJournal(const std::string& path) {
  if (path == "-") {
    throw std::runtime_error(
        "--journal -: standard output is the command's; name a file, a FIFO or /dev/fd/N");
  }
  return Target::File(path);
}

}  // namespace

void AddJournalOptions(CLI::App& subcommand, JournalOptions& options) {
  subcommand
      .add_option("--journal", options.file,
                  "write a line of JSON a command to this file or FIFO, in the order in which they "
                  "took effect")
      ->type_name("FILE");
  subcommand.add_flag("--trace", options.isTraced,
                      "print the same for people on standard error, a line a command");
}

Journal::Logs OpenLogs(const JournalOptions& options) {
  Journal::Logs logs;
  if (options.file) {
    logs.push_back(std::make_unique<QueuedLog>(
        OpenJournal(*options.file), std::make_unique<JournalForm>("vdrsim " TOOL_VERSION)));
  }
  if (options.isTraced) {
    logs.push_back(
        std::make_unique<QueuedLog>(Target::StandardError(), std::make_unique<TraceForm>()));
  }
  return logs;
}

}  // namespace vdrsim
