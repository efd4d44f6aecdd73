#include "scenario/scenario.h"

#include <fmt/format.h>

#include <cstring>
#include <memory>
#include <stdexcept>

#include "commands/subcommands.h"
#include "common/standard_streams.h"
#include "datapath/caps.h"
#include "state/state_writer.h"

namespace vdrsim {

namespace {

int PrintScenario(const Amounts& asked) {
  const Amounts amounts = Complete(asked);
  // A host without instances has no list of them.
  StateWriter writer(MakeHost(amounts), amounts.instances > 0 ? MakeInstances(amounts) : nullptr);
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) {
    if (const int error = tools::Print(piece)) {
      throw std::runtime_error(fmt::format("standard output: {}", std::strerror(error)));
    }
  }
  return 0;
}

std::string Help(const ObjectKind& kind) {
  if (kind.most == kNoCap) return fmt::format("{}, any number", kind.what);
  return fmt::format("{}, up to {}", kind.what, kind.most);
}

}  // namespace

void AddScenario(CLI::App& app, Action& action) {
  CLI::App* scenario = app.add_subcommand(
      "scenario",
      "Print a state of any size, for vdrsim run --state. What is not asked for is not there, but\n"
      "for what others can't be without: one of each. The same options print the same state.");
  const auto amounts = std::make_shared<Amounts>();
  for (const ObjectKind& kind : ObjectKinds()) {
    scenario->add_option(kind.option, (*amounts).*kind.amount, Help(kind))->option_text("N");
  }
  scenario->callback(
      [&action, amounts] { action = [amounts] { return PrintScenario(*amounts); }; });
}

}  // namespace vdrsim
