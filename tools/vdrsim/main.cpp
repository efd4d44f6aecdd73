#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "commands/subcommands.h"
#include "common/standard_streams.h"
#include "transport/standard_descriptors.h"

namespace {

using vdrsim::Action;
using vdrsim::kUnusable;

// Returns the exit status.
int Print(const std::string& text) {
  const int error = tools::Print(text);
  if (error == 0) return 0;
  tools::Complain("vdrsim", fmt::format("standard output: {}", std::strerror(error)));
  return kUnusable;
}

// What a person most likely meant who left out `run --`.
std::string Remedy(const CLI::App& app, int argc, char** argv) {
  const auto isFirst = [argv](const CLI::App* subcommand) {
    return subcommand->check_name(argv[1]);
  };
  if (argc < 2 || *argv[1] == '-' || !app.get_subcommands(isFirst).empty()) {
    return "Try 'vdrsim --help'";
  }
  return fmt::format("did you mean vdrsim run -- {}", fmt::join(argv + 1, argv + argc, " "));
}

// Returns what to do; where nothing is left to do, the exit status.
Action Parse(int argc, char** argv) {
  CLI::App app{"Runs programs against a simulated datapath of the virtual distributed router.",
               "vdrsim"};
  app.set_version_flag("--version", "vdrsim " TOOL_VERSION "\n");
  app.require_subcommand(1);
  Action action;
  vdrsim::AddRun(app, action);
  vdrsim::AddRecord(app, action);
  vdrsim::AddReplay(app, action);
  vdrsim::AddScenario(app, action);
  vdrsim::AddSchema(app, action);
  vdrsim::AddCtl(app, action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return [status = Print(app.help())] { return status; };
  } catch (const CLI::CallForVersion& version) {
    return [status = Print(version.what())] { return status; };
  } catch (const CLI::ParseError& error) {
    tools::Complain("vdrsim", error.what(), Remedy(app, argc, argv));
    return [] { return kUnusable; };
  }
  return action;
}

}  // namespace

int main(int argc, char** argv) {
  vdrsim::FillStandardDescriptors();
  try {
    return Parse(argc, argv)();
  } catch (const std::exception& failure) {
    tools::Complain("vdrsim", failure.what());
    return kUnusable;
  }
}
