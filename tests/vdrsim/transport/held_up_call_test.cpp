#include "transport/held_up_call.h"

#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "allocations.h"
#include "caller.h"
#include "kernel.h"
#include "usual_signals.h"

namespace {

using transport_test::Caller;
using transport_test::Command;
using transport_test::WatchedKernel;
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
  const UsualSignals usual;
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

TEST(HeldUpCall, KillsNobodyWhomItCannotHold) {
  Caller caller([] { Command(0); });
  vdrsim::HeldUpCall& call = caller.Next();
  std::vector<std::vector<long>> sent;
  const WatchedKernel kernel;
  bool canHold = false;
  kernel->syscall = [&](long number, long first, long second, long third, long fourth,
                        long) -> std::optional<long> {
    if (number == SYS_pidfd_send_signal) sent.push_back({second, third, fourth});
    if (number != SYS_pidfd_open || canHold) return std::nullopt;
    EXPECT_EQ(first, caller.process());
    errno = EMFILE;
    return -1;
  };
  call.Kill();
  EXPECT_EQ(sent, std::vector<std::vector<long>>{});
  canHold = true;
  call.Kill();
  EXPECT_EQ(sent, (std::vector<std::vector<long>>{{SIGKILL, 0, 0}}));
}

// So it is soon seen that a caller is gone.
TEST(HeldUpCall, LooksTenTimesASecondWhileItRests) {
  Caller caller([] { Command(0); });
  const vdrsim::HeldUpCall& call = caller.Next();
  int64_t now = 1'000'000'000'000;
  std::vector<int64_t> rests;
  const WatchedKernel kernel;
  kernel->now = [&] { return std::optional(now); };
  kernel->nanosleep = [&](const timespec* time, timespec*) {
    rests.push_back(time->tv_sec * 1'000'000'000 + time->tv_nsec);
    now += rests.back();
    return std::optional(0);
  };
  EXPECT_TRUE(call.Rest(250ms));
  EXPECT_EQ(rests, (std::vector<int64_t>{100'000'000, 100'000'000, 50'000'000}));
}

// A thread is looked up once, and the first of a process need not be.
TEST(HeldUpCall, RemembersTheProcessesOfThreads) {
  Caller caller([] {
    Command(0);
    std::thread([] {
      Command(0);
      Command(0);
    }).join();
  });
  std::vector<std::string> opened;
  const WatchedKernel kernel;
  kernel->open = [&](const char* path, int) {
    opened.emplace_back(path);
    return std::optional<int>();
  };
  std::vector<size_t> lookedUp;
  for (int round = 0; round < 3; ++round) {
    vdrsim::HeldUpCall& call = caller.Next();
    for (int again = 0; again < 2; ++again) EXPECT_EQ(call.Process(), caller.process());
    lookedUp.push_back(opened.size());
    call.Return(0);
  }
  EXPECT_EQ(lookedUp, (std::vector<size_t>{0, 1, 1}));
}

// What a kernel says that it needs for a call and for an answer, and is given.
size_t RoomFor(unsigned short call, unsigned short answer) {
  const WatchedKernel kernel;
  kernel->syscall = [=](long number, long operation, long flags, long sizes,
                        auto...) -> std::optional<long> {
    if (number != SYS_seccomp || operation != SECCOMP_GET_NOTIF_SIZES) return std::nullopt;
    EXPECT_EQ(flags, 0);
    *std::bit_cast<seccomp_notif_sizes*>(sizes) = {call, answer, 64};
    return 0;
  };
  transport_test::Rests rests;
  for (size_t room = 0;; ++room) {
    const allocations::Limit limit(room);
    try {
      const vdrsim::HeldUpCall needs(-1, rests);
      return room;
    } catch (const std::bad_alloc&) {
    }
  }
}

TEST(HeldUpCall, HasTheRoomThatTheKernelNeeds) {
  EXPECT_EQ(RoomFor(200, 24), 200);
  EXPECT_EQ(RoomFor(80, 201), 201);
  EXPECT_EQ(RoomFor(8, 8), 80) << "that of what is known here";
}

}  // namespace
