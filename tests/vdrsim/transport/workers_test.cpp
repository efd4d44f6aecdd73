#include "transport/workers.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <thread>

#include "caller.h"
#include "workers_of.h"

namespace {

using transport_test::Caller;
using transport_test::Command;
using namespace std::chrono_literals;

// A process that makes a call whenever it is told to, and then says so.
class Workers : public testing::Test {
 protected:
  void MakeCalls() const {
    char order = 0;
    while (read(orders_[0], &order, 1) == 1) {
      Command(0);
      (void)!write(done_[1], "", 1);
    }
  }

  // Returns when it is answered.
  void LetCall() const {
    char none = 0;
    EXPECT_EQ(write(orders_[1], "", 1), 1);
    EXPECT_EQ(read(done_[0], &none, 1), 1);
  }

  bool IsToldOfCalls() const {
    pollfd told{workers_.descriptor(), POLLIN, 0};
    return poll(&told, 1, 0) == 1;
  }

  // As long as calls come or are answered, another look is wanted.
  void LookToTheEnd() {
    while (workers_.LookAfter()) {
    }
  }

  static ptrdiff_t Threads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
  }

  const ptrdiff_t threadsBefore_ = Threads();
  int orders_[2]{};
  int done_[2]{};
  bool hasPipes_ = pipe(orders_) == 0 && pipe(done_) == 0;
  Caller caller_{[this] { MakeCalls(); }};
  vdrsim::Workers& workers_{transport_test::WorkersOf(caller_)};
};

TEST_F(Workers, AreNotLookedAfterWhileNoCallComes) {
  ASSERT_TRUE(hasPipes_);
  EXPECT_FALSE(IsToldOfCalls());
  EXPECT_TRUE(workers_.LookAfter()) << "nobody has looked yet";
  EXPECT_FALSE(workers_.LookAfter());
}

TEST_F(Workers, AreLookedAfterWhenCallsHaveCome) {
  ASSERT_TRUE(hasPipes_);
  for (int round = 0; round < 3; ++round) {
    LookToTheEnd();
    EXPECT_FALSE(IsToldOfCalls());
    LetCall();
    EXPECT_TRUE(IsToldOfCalls());
  }
}

TEST_F(Workers, EndWhenNobodyIsLeftToCall) {
  if (transport_test::kHasSanitizersThread) GTEST_SKIP() << "the sanitizer has a thread of its own";
  ASSERT_TRUE(hasPipes_);
  LetCall();
  caller_.Kill();
  while (Threads() > threadsBefore_) std::this_thread::sleep_for(1ms);
}

}  // namespace
