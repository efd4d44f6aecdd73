#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "common/standard_streams.h"
#include "datapath/datapath.h"
#include "transport/device_nodes.h"
#include "transport/intercepted_calls.h"
#include "transport/launcher.h"
#include "transport/members.h"
#include "transport/run_signals.h"
#include "transport/standard_descriptors.h"
#include "transport/supervisor.h"
#include "transport/witness.h"
#include "transport/workers.h"

namespace {

constexpr int kUnusable = 2;

struct Options {
  std::vector<std::string> command{};
  bool everyOpen = false;
  bool besideRealDevice = false;
};

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

// The workers use what stands here to the end of the process.
[[noreturn]] void RunCommand(const Options& options) {
  using namespace vdrsim;
  const DeviceNodes nodes(options.besideRealDevice);
  const Members members;
  const Witness witness;
  const RunSignals signals;
  const Scope scope = options.everyOpen ? Scope::EveryOpenAndLook : Scope::ReadWriteOpens;
  const Launched launched = Launch(options.command, scope, signals, nodes);
  Datapath datapath;
  const InterceptedCalls calls(nodes, datapath);
  Workers workers(launched.listener.get(), calls);
  EndLike(Supervisor(launched, signals, witness, members, workers).Run());
}

// Returns the exit status.
int Print(const std::string& text) {
  const int error = tools::Print(text);
  if (error == 0) return 0;
  tools::Complain("vdrsim", fmt::format("standard output: {}", std::strerror(error)));
  return kUnusable;
}

// What a person most likely meant who left out `run --`.
std::string Remedy(int argc, char** argv) {
  if (argc < 2 || *argv[1] == '-' || argv[1] == std::string_view("run")) {
    return "Try 'vdrsim --help'";
  }
  return fmt::format("did you mean vdrsim run -- {}", fmt::join(argv + 1, argv + argc, " "));
}

// Returns what to run, or the exit status when there is nothing to run.
std::variant<Options, int> Parse(int argc, char** argv) {
  CLI::App app{"Runs programs against a simulated datapath of the virtual distributed router.",
               "vdrsim"};
  app.set_version_flag("--version", "vdrsim " TOOL_VERSION "\n");
  app.require_subcommand(1);

  Options options;
  CLI::App* run = app.add_subcommand(
      "run",
      "Start COMMAND so that it, and all that it starts, finds the device nodes simulated.\n"
      "One datapath serves the whole run and is forgotten with it.");
  run->add_option("COMMAND", options.command, "the program to start, and its arguments")
      ->required();
  run->add_flag("--every-open", options.everyOpen,
                "also serve opens that are not for reading and writing, and show the nodes to "
                "programs that look before they open; this slows other opens down");
  run->add_flag("--beside-real-device", options.besideRealDevice,
                "run although this host has the true device; commands on it are refused")
      ->envname("VDRSIM_BESIDE_REAL_DEVICE");
  // What follows the first argument of the command is the command's, however it looks.
  run->positionals_at_end();

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return Print(app.help());
  } catch (const CLI::CallForVersion& version) {
    return Print(version.what());
  } catch (const CLI::ParseError& error) {
    tools::Complain("vdrsim", error.what(), Remedy(argc, argv));
    return kUnusable;
  }
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  vdrsim::FillStandardDescriptors();
  try {
    const auto parsed = Parse(argc, argv);
    if (const int* exitStatus = std::get_if<int>(&parsed)) return *exitStatus;
    RunCommand(std::get<Options>(parsed));
  } catch (const std::exception& failure) {
    tools::Complain("vdrsim", failure.what());
    return kUnusable;
  }
}
