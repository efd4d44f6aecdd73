#include "transport/witness.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <thread>

#include "kernel.h"

namespace {

using namespace std::chrono_literals;

// In a process group of its own, which signals are sent to.
class Witness : public testing::Test {
 protected:
  Witness() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before_);
  }
  ~Witness() override {
    sigset_t all;
    sigfillset(&all);
    constexpr timespec kAtOnce{};
    while (sigtimedwait(&all, nullptr, &kAtOnce) > 0) {
    }
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }

  // Waits until it is forgotten, which takes a moment.
  void AwaitNo(int signal) const {
    while (witness_.Got(signal)) std::this_thread::sleep_for(1ms);
  }

  const int group_ = setpgid(0, 0);
  vdrsim::Witness witness_{};
  sigset_t before_{};
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

}  // namespace
