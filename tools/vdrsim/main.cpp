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

bool IsSubcommand(const CLI::App& app, const char* word) {
  return !app.get_subcommands(
                 [word](const CLI::App* subcommand) { return subcommand->check_name(word); })
              .empty();
}

// What is wrong. That a subcommand is missing says nothing to whoever mistyped an option.
std::string Fault(const CLI::ParseError& error, int argc, char** argv) {
  const bool isOption = argc > 1 && *argv[1] == '-';
  return isOption ? fmt::format("unknown option {}", argv[1]) : error.what();
}

// What helps. Most likely `run --` was left out where the first word is no subcommand.
std::string Remedy(const CLI::App& app, int argc, char** argv) {
  if (argc < 2 || *argv[1] == '-') return "Try 'vdrsim --help'";
  if (IsSubcommand(app, argv[1])) return fmt::format("Try 'vdrsim {} --help'", argv[1]);
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
    tools::Complain("vdrsim", Fault(error, argc, argv), Remedy(app, argc, argv));
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
