#include <memory>

#include "commands/chain.h"
#include "commands/run_command.h"
#include "commands/subcommands.h"
#include "replay/matching_replay.h"
#include "replay/recording.h"
#include "replay/strict_replay.h"

namespace vdrsim {

namespace {

// The exit status of a run that did not keep to its recording.
constexpr int kDeparted = 3;

struct Options {
  std::string file{};
  ChainOptions chain{};
  RunOptions run{};
  bool isStrict = false;
};

int Replay(const Options& options) {
  RefuseJournal(options.chain.journal, options.file);
  const Recording recording(options.file);
  if (options.isStrict) {
    StrictReplay replay(recording);
    Chain(options.chain, replay).Run(options.run, [&replay] {
      return replay.Report() ? std::nullopt : std::optional(kDeparted);
    });
  }
  MatchingReplay replay(recording);
  Chain(options.chain, replay).Run(options.run, [&replay] {
    replay.Report();
    return std::nullopt;
  });
}

}  // namespace

void AddReplay(CLI::App& app, Action& action) {
  CLI::App* replay = app.add_subcommand("replay",
                                        "Start COMMAND so that each of its device commands is "
                                        "answered as the same command was in the "
                                        "recording FILE, which 'vdrsim record' has written.");
  const auto options = std::make_shared<Options>();
  replay->add_flag("--strict", options->isStrict,
                   "answer in the order of the recording alone; name the first departure from it, "
                   "and end with status 3");
  replay->add_option("FILE", options->file, "the recording to read")->required();
  AddChainOptions(*replay, options->chain);
  AddRunOptions(*replay, options->run);
  replay->callback([&action, options] {
    DropSeparator(options->run);
    action = [options] { return Replay(*options); };
  });
}

}  // namespace vdrsim
