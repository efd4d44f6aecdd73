#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "common/standard_streams.h"
#include "datapath/datapath.h"
#include "intercepted_calls.h"
#include "launcher.h"
#include "run_signals.h"
#include "simulated_node.h"
#include "supervisor.h"

namespace {

constexpr int kUnusable = 2;

// Whoever started this process must see of the command what it would have seen without vdrsim.
[[noreturn]] void EndLike(int status) {
  if (!WIFSIGNALED(status)) std::exit(WEXITSTATUS(status));
  const int number = WTERMSIG(status);
  // The command has left its core dump already, if there was to be one.
  prctl(PR_SET_DUMPABLE, 0);
  (void)std::signal(number, SIG_DFL);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, number);
  sigprocmask(SIG_UNBLOCK, &signals, nullptr);
  (void)raise(number);
  std::exit(128 + number);
}

// Returns the wait status of the command.
int RunCommand(const std::vector<std::string>& command) {
  using namespace vdrsim;
  std::set<pid_t> strangers = Children();
  const SimulatedNode node;
  const RunSignals signals;
  const Launched launched = Launch(command, signals, node);
  Datapath datapath;
  InterceptedCalls calls(launched.listener.get(), node, datapath);
  return Supervisor(launched, signals, calls, std::move(strangers)).Run();
}

// Returns the exit status.
int Print(const std::string& text) {
  const int error = tools::Print(text);
  if (error == 0) return 0;
  tools::Complain("vdrsim", fmt::format("standard output: {}", std::strerror(error)));
  return kUnusable;
}

// Returns the command, or the exit status when there is nothing to run.
std::variant<std::vector<std::string>, int> Parse(int argc, char** argv) {
  CLI::App app{"Runs programs against a simulated datapath of the virtual distributed router.",
               "vdrsim"};
  app.set_version_flag("--version", "vdrsim " TOOL_VERSION "\n");
  app.require_subcommand(1);

  std::vector<std::string> command;
  CLI::App* run = app.add_subcommand(
      "run",
      "Start COMMAND so that it, and all that it starts, finds the device nodes simulated.\n"
      "One datapath serves the whole run and is forgotten with it.");
  run->add_option("COMMAND", command, "the program to start, and its arguments")->required();
  // What follows the first argument of the command is the command's, however it looks.
  run->positionals_at_end();

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return Print(app.help());
  } catch (const CLI::CallForVersion& version) {
    return Print(version.what());
  } catch (const CLI::ParseError& error) {
    tools::Complain("vdrsim", error.what(), "Try 'vdrsim --help'");
    return kUnusable;
  }
  return command;
}

}  // namespace

int main(int argc, char** argv) {
  int status = 0;
  try {
    const auto parsed = Parse(argc, argv);
    if (const int* exitStatus = std::get_if<int>(&parsed)) return *exitStatus;
    status = RunCommand(std::get<std::vector<std::string>>(parsed));
  } catch (const std::exception& failure) {
    tools::Complain("vdrsim", failure.what());
    return kUnusable;
  }
  EndLike(status);
}
