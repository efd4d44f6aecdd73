#include "commands/journal_options.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>

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

JournalForm OwnForm() { return JournalForm("vdrsim " TOOL_VERSION); }

void RefuseJournal(const JournalOptions& options, const std::string& file) {
  std::error_code none;
  if (options.file && std::filesystem::equivalent(*options.file, file, none)) {
    throw std::runtime_error(*options.file + ": the journal would be written over the recording");
  }
}

Journal::Logs OpenLogs(const JournalOptions& options) {
  Journal::Logs logs;
  if (options.file) {
    logs.push_back(std::make_unique<QueuedLog>(OpenJournal(*options.file),
                                               std::make_unique<JournalForm>(OwnForm())));
  }
  if (options.isTraced) {
    logs.push_back(
        std::make_unique<QueuedLog>(Target::StandardError(), std::make_unique<TraceForm>()));
  }
  return logs;
}

}  // namespace vdrsim
