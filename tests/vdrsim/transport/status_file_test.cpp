#include "transport/status_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "caller.h"
#include "kernel.h"

namespace {

using transport_test::WatchedKernel;
using vdrsim::StatusFile;

uint64_t Number(const StatusFile& status, const char* label, int base = 10) {
  return status.Number(label, base).value_or(0);
}

TEST(StatusFile, SaysTheNumberBehindALabel) {
  const StatusFile status = StatusFile::Of(getpid());
  EXPECT_EQ(Number(status, "Pid:"), static_cast<uint64_t>(getpid()));
  EXPECT_EQ(Number(status, "PPid:"), static_cast<uint64_t>(getppid()));
  EXPECT_FALSE(status.Number("nonesuch:"));
  EXPECT_FALSE(status.Number("State:")) << "a letter";
}

TEST(StatusFile, SaysHexadecimalNumbersAsTheyAreNow) {
  const StatusFile status = StatusFile::Of(gettid());
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  sigprocmask(SIG_SETMASK, &blocked, &before);
  EXPECT_EQ(Number(status, "SigBlk:", 16), 0x200U);
  sigaddset(&blocked, SIGRTMAX);
  sigprocmask(SIG_SETMASK, &blocked, nullptr);
  EXPECT_EQ(Number(status, "SigBlk:", 16), 0x8000000000000200U);
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

// The name comes first, and is the process's own choice.
TEST(StatusFile, DoesNotTakeANameForALabel) {
  std::thread([] {
    prctl(PR_SET_NAME, "\nTgid:\t1");
    EXPECT_EQ(Number(StatusFile::Of(gettid()), "Tgid:"), static_cast<uint64_t>(getpid()));
  }).join();
}

// Wherever the pieces end in which the lines are read.
TEST(StatusFile, SaysWhatStandsBehindManyGroups) {
  bool canJoin = true;
  std::thread([&canJoin] {
    const StatusFile status = StatusFile::Of(gettid());
    const uint64_t threads = transport_test::kHasSanitizersThread ? 3 : 2;
    for (size_t count = 400; count < 900; ++count) {
      const std::vector<gid_t> groups(count, 2'000'000'000);
      // Of this thread alone.
      canJoin = syscall(SYS_setgroups, count, groups.data()) == 0;
      if (!canJoin) return;
      ASSERT_EQ(Number(status, "Threads:"), threads) << count;
      ASSERT_FALSE(status.Number("nonesuch:"));
    }
  }).join();
  if (!canJoin) GTEST_SKIP() << "only root can be of so many groups";
}

// Each part of a file overlaps the one before by more than a line; a short one is the last.
TEST(StatusFile, IsReadInPartsThatOverlap) {
  const std::string file = "Name:\tmany\n" + std::string(4090, 'x') + "\nTgid:\t42\nlast:\t7";
  std::vector<std::pair<size_t, off_t>> parts;
  const WatchedKernel kernel;
  kernel->pread = [&](int, void* buffer, size_t size, off_t offset) {
    parts.emplace_back(size, offset);
    return std::optional(static_cast<ssize_t>(
        file.copy(static_cast<char*>(buffer), size, static_cast<size_t>(offset))));
  };
  const StatusFile status = StatusFile::Of(getpid());
  EXPECT_EQ(Number(status, "Tgid:"), 42);
  EXPECT_EQ(parts, (std::vector<std::pair<size_t, off_t>>{{4096, 0}, {4096, 3840}}));
  parts.clear();
  EXPECT_FALSE(status.Number("last:")) << "a line without an end";
  EXPECT_EQ(parts, (std::vector<std::pair<size_t, off_t>>{{4096, 0}, {4096, 3840}}));
}

TEST(StatusFile, IsEmptyWhereThereIsNone) {
  const StatusFile none = StatusFile::Of(-1);
  EXPECT_FALSE(none);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(none.Number("Pid:"));
}

}  // namespace
