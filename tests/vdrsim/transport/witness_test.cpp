#include "transport/witness.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <thread>

#include "kernel.h"
#include "soft_limit.h"
#include "usual_signals.h"

namespace {

using namespace std::chrono_literals;

// In a process group of its own, which signals are sent to.
class Witness : public testing::Test {
 protected:
  Witness() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, nullptr);
  }

  // Waits until it is forgotten, which takes a moment.
  void AwaitNo(int signal) const {
    while (witness_.Got(signal)) std::this_thread::sleep_for(1ms);
  }

  UsualSignals usual_{};
  const int group_ = setpgid(0, 0);
  vdrsim::Witness witness_{};
};

TEST_F(Witness, GotWhatItsGroupGot) {
  ASSERT_EQ(group_, 0);
  kill(getpid(), SIGUSR1);
  EXPECT_FALSE(witness_.Got(SIGUSR1));
  kill(0, SIGUSR1);
  EXPECT_FALSE(witness_.Got(SIGUSR2));
  EXPECT_TRUE(witness_.Got(SIGUSR1));
  AwaitNo(SIGUSR1);
}

// The first and the last one, too, when one of them was asked for.
TEST_F(Witness, ForgetsAllAtOnce) {
  kill(0, SIGHUP);
  kill(0, SIGUSR1);
  kill(0, SIGRTMAX);
  EXPECT_TRUE(witness_.Got(SIGRTMAX));
  const transport_test::WatchedKernel kernel;
  kernel->write = [](int, const void*, size_t size) {
    return std::optional(static_cast<ssize_t>(size));  // it is told no more
  };
  AwaitNo(SIGHUP);
  AwaitNo(SIGUSR1);
  AwaitNo(SIGRTMAX);
}

// Then every signal is taken for one to this process alone.
TEST_F(Witness, GotNothingWhereThereIsNone) {
  std::optional<vdrsim::Witness> none;
  {
    const SoftLimit few(RLIMIT_NOFILE, 0);
    none.emplace();
  }
  kill(0, SIGUSR2);
  EXPECT_FALSE(none->Got(SIGUSR2));
}

}  // namespace
