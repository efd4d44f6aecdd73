#include "transport/members.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "caller.h"
#include "failures.h"
#include "kernel.h"

namespace {

using transport_test::Caller;
using transport_test::FailsToOpen;
using transport_test::WatchedKernel;
using vdrsim::Members;

void Stay() { pause(); }

TEST(Members, AreThoseThatAreUnderOneFilterMore) {
  const Members members;
  EXPECT_EQ(members.Find().processes, std::vector<pid_t>{});
  const Caller one(Stay);
  const Caller two(Stay);
  std::vector<pid_t> found = members.Find().processes;
  std::ranges::sort(found);
  std::vector<pid_t> expected{one.process(), two.process()};
  std::ranges::sort(expected);
  EXPECT_EQ(found, expected);
}

// The kernel may give the list in any pieces.
TEST(Members, AreFoundInAListThatComesByTheByte) {
  const Members members;
  const Caller caller(Stay);
  const WatchedKernel kernel;
  kernel->pread = [](int file, void* buffer, size_t size, off_t offset) -> std::optional<ssize_t> {
    const auto name = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file));
    const iovec byte{buffer, std::min<size_t>(size, 1)};
    return name.filename() == "children" ? preadv(file, &byte, 1, offset)
                                         : std::optional<ssize_t>();
  };
  EXPECT_EQ(members.Find().processes, std::vector{caller.process()});
}

TEST(Members, AreNotAllFoundWithoutADescriptorToLookAtThem) {
  const Members members;
  const Caller caller(Stay);
  const WatchedKernel kernel;
  kernel->open = FailsToOpen("/status", EMFILE);
  EXPECT_FALSE(members.Find().isComplete);
  kernel->open = FailsToOpen("/status", ENOENT);
  EXPECT_TRUE(members.Find().isComplete) << "it has ended meanwhile";
  EXPECT_EQ(members.Find().processes, std::vector<pid_t>{});
}

TEST(Members, CannotBeToldWhereTheKernelDoesNotSay) {
  const WatchedKernel kernel;
  for (const char* const file : {"/children", "/status"}) {
    kernel->open = FailsToOpen(file, EACCES);
    EXPECT_EQ(transport_test::StartFailureOf([] { const Members members; }),
              "cannot look at the children of this process: Permission denied")
        << file;
  }
}

}  // namespace
