#include "transport/held_up_call.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <vector>

#include "caller.h"

namespace {

using transport_test::Caller;
using transport_test::Command;
using namespace std::chrono_literals;

TEST(HeldUpCall, RestsAsLongAsItIsTold) {
  Caller caller([] { Command(0); });
  const vdrsim::HeldUpCall& call = caller.Next();
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(call.Rest(130ms));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, 130ms);
  EXPECT_EQ(caller.rests(), "()") << "others are answered meanwhile, and no longer";
}

// Else a run could fill up with those that wait for nobody.
TEST(HeldUpCall, RestsNoLongerThanItsCallerIsThere) {
  Caller caller([] { Command(0); });
  const vdrsim::HeldUpCall& call = caller.Next();
  caller.Kill();
  EXPECT_FALSE(call.Rest(24h));
}

// A thread can give itself a name that looks like what the kernel says about it.
TEST(HeldUpCall, KnowsTheProcessOfAThreadWhateverItsName) {
  Caller caller([] {
    std::thread([] {
      prctl(PR_SET_NAME, "Tgid:\t1");
      Command(0);
      Command(0);
    }).join();
  });
  for (int round = 0; round < 2; ++round) {
    vdrsim::HeldUpCall& call = caller.Next();
    EXPECT_NE(call.thread(), caller.process());
    EXPECT_EQ(call.Process(), caller.process());
    call.Return(0);
  }
}

TEST(HeldUpCall, KnowsTheProcessOfEachCall) {
  Caller caller([] {
    Command(0);
    if (fork() == 0) {
      Command(0);
      _exit(0);
    }
    wait(nullptr);
    Command(0);
  });
  std::vector<pid_t> processes;
  for (int round = 0; round < 3; ++round) {
    vdrsim::HeldUpCall& call = caller.Next();
    processes.push_back(call.Process());
    EXPECT_EQ(processes.back(), call.thread());
    call.Return(0);
  }
  EXPECT_EQ(processes[0], caller.process());
  EXPECT_NE(processes[1], caller.process());
  EXPECT_EQ(processes[2], caller.process());
}

TEST(HeldUpCall, KillsTheProcessOfItsCaller) {
  Caller caller([] { std::thread([] { Command(0); }).join(); });
  caller.Next().Kill();
  siginfo_t end{};
  EXPECT_EQ(waitid(P_PID, static_cast<id_t>(caller.process()), &end, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(end.si_code, CLD_KILLED);
  EXPECT_EQ(end.si_status, SIGKILL);
}

TEST(HeldUpCall, DoesNotKillWhoDoesNotWaitAnyMore) {
  Caller caller([] {
    Command(0);
    Command(0);
  });
  vdrsim::HeldUpCall& call = caller.Next();
  call.Return(0);
  call.Kill();
  caller.Next();
}

}  // namespace
