#include "commands/state_options.h"

#include <exception>
#include <optional>

#include "common/standard_streams.h"
#include "state/state_file.h"

namespace vdrsim {

namespace {

constexpr int kNotSaved = 2;

std::optional<int> Save(const SavedState& file, const Datapath& datapath) {
  try {
    file.Save(datapath.state());
    return std::nullopt;
  } catch (const std::exception& failure) {
    tools::Complain("vdrsim", failure.what());
    return kNotSaved;
  }
}

}  // namespace

std::array<CLI::Option*, 2> AddStateOptions(CLI::App& subcommand, StateOptions& options) {
  CLI::Option* load = subcommand.add_option(
      "--state", options.load,
      "begin with the state that the JSON document FILE describes; - is standard input");
  CLI::Option* save =
      subcommand.add_option("--save", options.save,
                            "write the state to FILE when the run is over, however COMMAND ended");
  return {load->option_text("FILE"), save->option_text("FILE")};
}

AtEnd Prepare(const StateOptions& options, Datapath& datapath) {
  if (!options.load.empty()) datapath.Replace(LoadState(options.load));
  if (options.save.empty()) return NothingAtEnd;
  return [&datapath, file = SavedState(options.save)] { return Save(file, datapath); };
}

}  // namespace vdrsim
