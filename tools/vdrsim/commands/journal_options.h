#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "journal/journal.h"
#include "journal/journal_form.h"

namespace vdrsim {

// What is to be told of a run's commands while it goes on.
struct JournalOptions {
  std::optional<std::string> file{};
  bool isTraced = false;
};

void AddJournalOptions(CLI::App& subcommand, JournalOptions& options);

// How this program writes a line of a journal.
JournalForm OwnForm();

// Throws std::runtime_error when the journal would be written over this file.
void RefuseJournal(const JournalOptions& options, const std::string& file);

// Creates what was asked for. Throws std::runtime_error.
Journal::Logs OpenLogs(const JournalOptions& options);

}  // namespace vdrsim
