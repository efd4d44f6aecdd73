#include <memory>

#include "commands/chain.h"
#include "commands/run_command.h"
#include "commands/run_control.h"
#include "commands/state_options.h"
#include "commands/subcommands.h"
#include "datapath/datapath.h"
#include "record/forward.h"
#include "record/node_device.h"
#include "transport/node_path.h"

namespace vdrsim {

namespace {

struct Options {
  StateOptions state{};
  ChainOptions chain{};
  RunOptions run{};
  bool isSimulated = false;
};

int RecordSimulation(const Options& options) {
  Datapath datapath;
  const AtEnd save = Prepare(options.state, datapath);
  Chain chain(options.chain, datapath);
  ControlState(chain.control(), datapath);
  chain.Run(options.run, save);
}

int RecordDevice(Options options) {
  // The run itself is what commands reach the device by.
  options.run.besideRealDevice = true;
  NodeDevice device({NodePath(Node::Normal), NodePath(Node::Upgrade)});
  Forward forward(device);
  Chain(options.chain, forward).Run(options.run);
}

}  // namespace

void AddRecord(CLI::App& app, Action& action) {
  CLI::App* record = app.add_subcommand(
      "record",
      "Start COMMAND on a host with the device, carry out its commands, and write them and what "
      "became of them to FILE, for replay.");
  const auto options = std::make_shared<Options>();
  CLI::Option* simulated =
      record->add_flag("--simulated", options->isSimulated,
                       "carry the commands out on the simulated datapath instead");
  record->add_option("FILE", options->chain.recording, "the recording to write")->required();
  for (CLI::Option* option : AddStateOptions(*record, options->state)) option->needs(simulated);
  AddChainOptions(*record, options->chain);
  AddRunOptions(*record, options->run);
  record->callback([&action, options] {
    DropSeparator(options->run);
    action = [options] {
      return options->isSimulated ? RecordSimulation(*options) : RecordDevice(*options);
    };
  });
}

}  // namespace vdrsim
