#include "transport/run_signals.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <set>

#include "failures.h"
#include "kernel.h"
#include "usual_signals.h"

namespace {

// What can't be held, or would come from a mistake of vdrsim's own.
const std::set<int> kOwn{SIGKILL, SIGSTOP, SIGSEGV, SIGBUS, SIGFPE,
                         SIGILL,  SIGTRAP, SIGSYS,  SIGABRT};

bool IsBlocked(int signal) {
  sigset_t blocked;
  sigprocmask(SIG_SETMASK, nullptr, &blocked);
  return sigismember(&blocked, signal) == 1;
}

bool IsHeld(const vdrsim::RunSignals& signals, int signal) {
  EXPECT_EQ(syscall(SYS_tgkill, getpid(), gettid(), signal), 0);
  const auto next = signals.Next();
  return next && next->ssi_signo == static_cast<uint32_t>(signal);
}

void Block(int signal) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, signal);
  sigprocmask(SIG_BLOCK, &set, nullptr);
}

class RunSignals : public testing::Test {
 protected:
  UsualSignals usual_{};
};

TEST_F(RunSignals, HoldAllThatCanBeHeld) {
  const vdrsim::RunSignals signals;
  EXPECT_FALSE(signals.Next());
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    // The C library keeps some for itself.
    if (signal >= __SIGRTMIN && signal < SIGRTMIN) continue;
    if (kOwn.contains(signal)) {
      EXPECT_FALSE(IsBlocked(signal)) << signal;
    } else {
      EXPECT_TRUE(IsHeld(signals, signal)) << signal;
    }
  }
  signals.Restore();
  for (int signal = 1; signal <= SIGRTMAX; ++signal) EXPECT_FALSE(IsBlocked(signal)) << signal;
}

TEST_F(RunSignals, LeaveWhatIsIgnoredOrBlocked) {
  (void)signal(SIGUSR1, SIG_IGN);
  Block(SIGUSR2);
  const vdrsim::RunSignals signals;
  EXPECT_FALSE(IsHeld(signals, SIGUSR1));
  EXPECT_FALSE(IsBlocked(SIGUSR1));
  EXPECT_FALSE(IsHeld(signals, SIGUSR2));
  EXPECT_TRUE(IsHeld(signals, SIGHUP));
  signals.Restore();
  EXPECT_TRUE(IsBlocked(SIGUSR2));
  EXPECT_FALSE(IsBlocked(SIGHUP));
}

// Of a child that ends while SIGCHLD is ignored nothing is left to be asked.
TEST_F(RunSignals, KeepHowAChildEnded) {
  (void)signal(SIGCHLD, SIG_IGN);
  const vdrsim::RunSignals signals;
  const pid_t child = fork();
  if (child == 0) _exit(7);
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 7);
  signals.Restore();
  struct sigaction action {};
  sigaction(SIGCHLD, nullptr, &action);
  EXPECT_EQ(action.sa_handler, SIG_IGN);
}

TEST_F(RunSignals, SayThatTheyCannotBeHeld) {
  const transport_test::WatchedKernel kernel;
  kernel->signalfd = transport_test::FailsWith(EMFILE);
  EXPECT_EQ(transport_test::StartFailureOf([] { const vdrsim::RunSignals signals; }),
            "cannot hold signals: Too many open files");
}

}  // namespace
