#include "commands/run_command.h"

#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>

#include "transport/device_nodes.h"
#include "transport/intercepted_calls.h"
#include "transport/launcher.h"
#include "transport/members.h"
#include "transport/run_signals.h"
#include "transport/supervisor.h"
#include "transport/witness.h"
#include "transport/workers.h"

namespace vdrsim {

namespace {

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

}  // namespace

void AddRunOptions(CLI::App& subcommand, RunOptions& options) {
  subcommand.add_option("COMMAND", options.command, "the program to start, and its arguments")
      ->required();
  subcommand.add_flag(
      "--every-open", options.everyOpen,
      "also serve opens that are not for reading and writing, and show the nodes to "
      "programs that look before they open; this slows other opens down");
  subcommand
      .add_flag("--beside-real-device", options.besideRealDevice,
                "run although this host has the true device; commands on it are refused")
      ->envname("VDRSIM_BESIDE_REAL_DEVICE");
  // What follows the first argument of the command is the command's, however it looks.
  subcommand.positionals_at_end();
}

void DropSeparator(RunOptions& options) {
  const std::string& first = options.command.front();
  if (first.starts_with('-') && first != "--") {
    throw CLI::ParseError("options stand before FILE: " + first, CLI::ExitCodes::ExtrasError);
  }
  if (first != "--") return;
  options.command.erase(options.command.begin());
  if (options.command.empty()) throw CLI::RequiredError("COMMAND");
}

// The workers use what stands here to the end of the process.
void RunCommand(const RunOptions& options, Executor& executor, const AtEnd& atEnd) {
  const DeviceNodes nodes(options.besideRealDevice);
  const Members members;
  const Witness witness;
  const RunSignals signals;
  const Scope scope = options.everyOpen ? Scope::EveryOpenAndLook : Scope::ReadWriteOpens;
  Launched launched = Launch(options.command, scope, signals, nodes);
  const InterceptedCalls calls(nodes, executor);
  Workers workers(launched.listener.get(), calls);
  launched.Begin();
  const int status = Supervisor(launched, signals, witness, members, workers).Run();
  if (const auto exitStatus = atEnd()) std::exit(*exitStatus);
  EndLike(status);
}

}  // namespace vdrsim
