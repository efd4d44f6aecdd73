#include "transport/device_nodes.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <utility>
#include <vector>

#include "failures.h"
#include "kernel.h"

namespace {

using transport_test::Fail;
using transport_test::WatchedKernel;
using vdrsim::DeviceNodes;
using vdrsim::Node;

// The flags of the memory files that are asked for, where each of them fails so.
std::vector<unsigned> AskedFor(int error) {
  std::vector<unsigned> asked;
  const WatchedKernel kernel;
  kernel->memfd_create = [&](const char*, unsigned flags) {
    asked.push_back(flags);
    return Fail(error);
  };
  EXPECT_THROW(DeviceNodes(true), vdrsim::StartFailure);
  return asked;
}

// Kernels before 6.3 don't know that a file can be never executable.
TEST(DeviceNodes, AreFilesThatNobodyExecutesWhereTheKernelKnowsThem) {
  EXPECT_EQ(AskedFor(EINVAL), (std::vector<unsigned>{0xb, 0x3}));
  EXPECT_EQ(AskedFor(EMFILE), (std::vector<unsigned>{0xb}));
  const WatchedKernel kernel;
  std::vector<unsigned> asked;
  kernel->memfd_create = [&](const char*, unsigned flags) {
    asked.push_back(flags);
    errno = EINVAL;  // an older one
    return std::optional<int>();
  };
  const DeviceNodes nodes(true);
  EXPECT_EQ(asked, (std::vector<unsigned>{0xb, 0xb}));
}

TEST(DeviceNodes, AreNotThereWithoutTheirNamesUnderProc) {
  const WatchedKernel kernel;
  kernel->statx = transport_test::FailsWith(EACCES);
  EXPECT_EQ(transport_test::StartFailureOf([] { const DeviceNodes nodes(true); }),
            "cannot look at /proc/self/fd: Permission denied (/proc must be mounted)");
}

// How often a node is opened, and its permissions given back, where each open ends so.
std::pair<int, int> Tries(int openError, int chmodError) {
  const DeviceNodes nodes(true);
  std::pair<int, int> tries;
  const WatchedKernel kernel;
  kernel->open = [&](const char*, int) {
    ++tries.first;
    return openError != 0 ? Fail(openError) : std::nullopt;
  };
  kernel->fchmod = [&](int, mode_t mode) {
    EXPECT_EQ(mode, 0666);
    ++tries.second;
    return chmodError != 0 ? Fail(chmodError) : std::nullopt;
  };
  errno = EACCES;  // of an earlier call
  const bool isOpen = static_cast<bool>(nodes.Open(Node::Normal, O_RDWR));
  EXPECT_EQ(isOpen, openError == 0);
  return tries;
}

// Somebody may take them away again and again.
TEST(DeviceNodes, AreGivenTheirPermissionsAHundredTimes) {
  EXPECT_EQ(Tries(EACCES, 0), std::pair(101, 100));
  EXPECT_EQ(Tries(EACCES, EPERM), std::pair(1, 1));
  EXPECT_EQ(Tries(EMFILE, 0), std::pair(1, 0));
  EXPECT_EQ(Tries(0, 0), std::pair(1, 0));
}

}  // namespace
