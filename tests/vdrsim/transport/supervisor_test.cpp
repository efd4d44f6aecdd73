#include "transport/supervisor.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "caller.h"
#include "kernel.h"
#include "usual_signals.h"
#include "workers_of.h"

namespace {

using transport_test::Caller;
using transport_test::WatchedKernel;

// A run whose command has ended and left a process that is deaf to signals, in a time that passes
// while the run waits, and no faster.
class SupervisedRun : public testing::Test {
 protected:
  SupervisedRun() {
    kernel_->now = [this] { return std::optional<int64_t>(time_ * 1'000'000); };
    kernel_->poll = [this](pollfd* sources, nfds_t count, int timeout) -> std::optional<int> {
      if (count != 3) return std::nullopt;
      for (nfds_t i = 0; i < count; ++i) EXPECT_EQ(sources[i].revents, 0);
      if (timeout > 0) time_ += timeout;
      return Poll(sources, timeout);
    };
    kernel_->kill = [this](pid_t process, int signal) {
      if (!left_) return std::optional<int>();  // the test has ended
      EXPECT_EQ(process, left_->process());
      seen_.push_back("signal " + std::to_string(signal));
      return std::optional<int>();
    };
    kernel_->isatty = [](int) { return std::optional<int>(1); };
    kernel_->write = [this](int file, const void* bytes, size_t size) -> std::optional<ssize_t> {
      if (file != STDERR_FILENO) return std::nullopt;
      seen_.emplace_back(static_cast<const char*>(bytes), size);
      return static_cast<ssize_t>(size);
    };
  }
  ~SupervisedRun() override { signals_.Restore(); }

  // Waits no longer than until something is there.
  std::optional<int> Poll(pollfd* sources, int timeout) {
    seen_.push_back("wait " + std::to_string(timeout));
    if (onWait_) onWait_(timeout);
    const timespec atOnce{};
    return ppoll(sources, 3, timeout < 0 || isOver_ ? nullptr : &atOnce, nullptr);
  }

  // Of the command, after which the other process goes on with these calls.
  int Run(const std::function<void()>& calls = [] { pause(); }) {
    left_.emplace(calls);
    launched_.listener = vdrsim::UniqueFd(dup(left_->listener()));
    vdrsim::Workers& workers = transport_test::WorkersOf(*left_);
    return vdrsim::Supervisor(launched_, signals_, witness_, members_, workers).Run();
  }

  static pid_t EndedCommand() {
    const pid_t process = fork();
    if (process == 0) _exit(7);
    siginfo_t end{};
    waitid(P_PID, static_cast<id_t>(process), &end, WEXITED | WNOWAIT);
    return process;
  }

  UsualSignals usual_{};
  int64_t time_ = 1'000'000;
  bool isOver_ = false;
  std::function<void(int)> onWait_{};
  std::vector<std::string> seen_{};
  WatchedKernel kernel_{};
  vdrsim::Members members_{};
  vdrsim::Witness witness_{};
  vdrsim::RunSignals signals_{};
  std::optional<Caller> left_{};
  vdrsim::Launched launched_{EndedCommand(), vdrsim::UniqueFd()};
};

TEST_F(SupervisedRun, IsEndedWithinTwoSeconds) {
  sigqueue(getpid(), SIGTERM, {});
  onWait_ = [this](int) { isOver_ = seen_.size() > 2 && seen_[seen_.size() - 2] == "signal 9"; };
  const int status = Run();
  EXPECT_EQ(WEXITSTATUS(status), 7);
  std::vector<std::string> expected{"wait -1", "signal 15"};
  for (int round = 0; round < 40; ++round) expected.emplace_back("wait 50");
  expected.emplace_back("signal 9");
  ASSERT_GE(seen_.size(), expected.size());
  seen_.resize(expected.size());
  EXPECT_EQ(seen_, expected);
}

TEST_F(SupervisedRun, SaysAfterAMomentWhatItWaitsFor) {
  onWait_ = [this](int timeout) {
    if (timeout < 0 && seen_.size() > 1) left_->Kill();
  };
  EXPECT_EQ(WEXITSTATUS(Run()), 7);
  std::vector<std::string> expected{"wait -1"};
  for (int round = 0; round < 6; ++round) expected.emplace_back("wait 50");
  expected.emplace_back(
      "vdrsim: the command has ended; waiting for processes that it left (Ctrl-C ends them)\n");
  expected.emplace_back("wait -1");
  ASSERT_GE(seen_.size(), expected.size());
  seen_.resize(expected.size());
  EXPECT_EQ(seen_, expected);
}

// Its number may be another's by then.
TEST_F(SupervisedRun, HandsOnNothingToACommandThatHasEnded) {
  sigqueue(getpid(), SIGTERM, {});
  onWait_ = [hasCome = false](int timeout) mutable {
    if (timeout < 0 || std::exchange(hasCome, true)) return;
    const pid_t other = fork();
    if (other == 0) _exit(static_cast<int>(syscall(SYS_kill, getppid(), SIGUSR1)));
    waitpid(other, nullptr, 0);
  };
  EXPECT_EQ(WEXITSTATUS(Run()), 7);
  EXPECT_EQ(std::ranges::count(seen_, "signal 10"), 0);
}

// Whoever is left may be seen the next time.
TEST_F(SupervisedRun, GoesOnLookingWhereMemoryIsMissing) {
  sigqueue(getpid(), SIGTERM, {});
  bool hasEnded = false;
  int failures = 0;
  kernel_->pread = [&](auto...) -> std::optional<ssize_t> {
    if (hasEnded && ++failures <= 3) throw std::bad_alloc();
    return std::nullopt;
  };
  onWait_ = [&](int timeout) { hasEnded = timeout > 0; };
  EXPECT_EQ(WEXITSTATUS(Run()), 7);
  EXPECT_GT(failures, 3);
  EXPECT_EQ(std::ranges::count(seen_, "signal 15"), 1);
}

// As when it writes to a witness that was killed.
TEST_F(SupervisedRun, HandsOnNoSignalOfItsOwn) {
  syscall(SYS_kill, getpid(), SIGTERM);
  onWait_ = [this](int timeout) {
    if (timeout < 0 && seen_.size() > 1) left_->Kill();
  };
  EXPECT_EQ(WEXITSTATUS(Run()), 7);
  EXPECT_EQ(std::ranges::count(seen_, "signal 15"), 0);
}

TEST_F(SupervisedRun, LooksAfterTheWorkersWhileCallsCome) {
  bool hasLooked = false;
  onWait_ = [&](int timeout) {
    if (timeout == 10) hasLooked = true;
    if (hasLooked) left_->Kill();
  };
  EXPECT_EQ(WEXITSTATUS(Run([] {
              transport_test::Command(0);
              pause();
            })),
            7);
}

// A signal that is not held interrupts it.
TEST_F(SupervisedRun, GoesOnWaitingWhereThatIsInterrupted) {
  int interruptions = 0;
  onWait_ = [this](int timeout) {
    if (timeout < 0 && seen_.size() > 1) left_->Kill();
  };
  const auto poll = kernel_->poll;
  kernel_->poll = [&](pollfd* sources, nfds_t count, int timeout) -> std::optional<int> {
    if (count != 3 || ++interruptions > 3) return poll(sources, count, timeout);
    errno = EINTR;
    return -1;
  };
  EXPECT_EQ(WEXITSTATUS(Run()), 7);
  EXPECT_GT(interruptions, 3);
}

}  // namespace
