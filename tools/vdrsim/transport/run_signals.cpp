#include "run_signals.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "start_failure.h"

namespace vdrsim {

namespace {

bool IsIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

// What a mistake of this process's own would raise, and what can't be held.
bool IsOwn(int signal) {
  constexpr int kOwn[] = {SIGKILL, SIGSTOP, SIGSEGV, SIGBUS, SIGFPE,
                          SIGILL,  SIGTRAP, SIGSYS,  SIGABRT};
  return std::ranges::find(kOwn, signal) != std::end(kOwn);
}

}  // namespace

RunSignals::RunSignals() {
  sigprocmask(SIG_SETMASK, nullptr, &originalMask_);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGCHLD);
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    if (!IsOwn(signal) && !IsIgnored(signal) && sigismember(&originalMask_, signal) == 0) {
      sigaddset(&signals, signal);
    }
  }
  // While SIGCHLD is ignored, the kernel keeps no exit status of a child.
  constexpr struct sigaction kByDefault {};
  sigaction(SIGCHLD, &kByDefault, &originalChildAction_);
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

void RunSignals::Stop() const {
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGTSTP);
  (void)raise(SIGTSTP);
  sigset_t before;
  pthread_sigmask(SIG_UNBLOCK, &stop, &before);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace vdrsim
