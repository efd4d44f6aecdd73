#include "run_signals.h"

#include <cerrno>

#include "start_failure.h"

namespace vdrsim {

namespace {

bool IsIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

RunSignals::RunSignals() {
  sigprocmask(SIG_SETMASK, nullptr, &originalMask_);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGCHLD);
  for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
    if (!IsIgnored(signal) && sigismember(&originalMask_, signal) == 0) {
      sigaddset(&signals, signal);
    }
  }
  // While SIGCHLD is ignored, the kernel keeps no exit status of a child.
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigaction(SIGCHLD, &action, &originalChildAction_);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  held_ = UniqueFd(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
  if (!held_) FailStart("cannot hold signals", errno);
}

void RunSignals::Restore() const {
  sigaction(SIGCHLD, &originalChildAction_, nullptr);
  sigprocmask(SIG_SETMASK, &originalMask_, nullptr);
}

std::optional<signalfd_siginfo> RunSignals::Next() const {
  signalfd_siginfo signal{};
  if (read(held_.get(), &signal, sizeof signal) != sizeof signal) return std::nullopt;
  return signal;
}

}  // namespace vdrsim
