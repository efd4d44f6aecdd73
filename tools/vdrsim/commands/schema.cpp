#include <fmt/format.h>

#include <cstring>
#include <stdexcept>

#include "commands/subcommands.h"
#include "common/standard_streams.h"
#include "state/state_schema.h"

namespace vdrsim {

namespace {

int PrintStateSchema() {
  if (const int error = tools::Print(StateSchema())) {
    throw std::runtime_error(fmt::format("standard output: {}", std::strerror(error)));
  }
  return 0;
}

}  // namespace

void AddSchema(CLI::App& app, Action& action) {
  CLI::App* schema = app.add_subcommand("schema", "Print the JSON Schema of a kind of documents.");
  schema->require_subcommand(1);
  schema->add_subcommand("state", "states, of vdrsim run --state and --save")->callback([&action] {
    action = PrintStateSchema;
  });
}

}  // namespace vdrsim
