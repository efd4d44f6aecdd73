#include <memory>

#include "commands/run_command.h"
#include "commands/run_control.h"
#include "commands/subcommands.h"
#include "datapath/datapath.h"
#include "journal/journal.h"
#include "record/forward.h"
#include "record/node_device.h"
#include "record/recording_log.h"
#include "transport/node_path.h"

namespace vdrsim {

namespace {

struct Options {
  std::string file{};
  RunOptions run{};
  bool isSimulated = false;
};

int Run(const Options& options, Executor& end) {
  Journal::Logs logs;
  logs.push_back(std::make_unique<RecordingLog>(options.file, JournalForm("vdrsim " TOOL_VERSION)));
  Journal journal(end, std::move(logs), Journal::Keeps::Outputs);
  Control control(journal);
  ControlJournal(control, journal);
  RunCommand(options.run, control,
             [&journal] { return journal.Finish() ? std::nullopt : std::optional(kUnusable); });
}

int Record(Options options) {
  if (options.isSimulated) {
    Datapath datapath;
    return Run(options, datapath);
  }
  // The run itself is what commands reach the device by.
  options.run.besideRealDevice = true;
  NodeDevice device({NodePath(Node::Normal), NodePath(Node::Upgrade)});
  Forward forward(device);
  return Run(options, forward);
}

}  // namespace

void AddRecord(CLI::App& app, Action& action) {
  CLI::App* record = app.add_subcommand(
      "record",
      "Start COMMAND on a host with the device, carry out its commands, and write them and what "
      "became of them to FILE, for replay.");
  const auto options = std::make_shared<Options>();
  record->add_flag("--simulated", options->isSimulated,
                   "carry the commands out on the simulated datapath instead");
  record->add_option("FILE", options->file, "the recording to write")->required();
  AddRunOptions(*record, options->run);
  record->callback([&action, options] {
    DropSeparator(options->run);
    action = [options] { return Record(*options); };
  });
}

}  // namespace vdrsim
