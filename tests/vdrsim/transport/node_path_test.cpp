#include "transport/node_path.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <optional>
#include <string>

#include "caller.h"
#include "kernel.h"

namespace {

using transport_test::Caller;
using transport_test::WatchedKernel;
using vdrsim::Node;

const std::string kNode = "qorv/devices/char/zaxdriver/ryn_vdr";

// The node that a path means to a process in this directory; where the directory is empty, it can't
// be looked at.
std::optional<Node> Named(const std::string& path, const std::string& directory) {
  Caller caller([&] { syscall(SYS_openat, AT_FDCWD, path.c_str(), O_RDWR); });
  vdrsim::HeldUpCall& call = caller.Next();
  const WatchedKernel kernel;
  kernel->readlink = [&](const char* link, char* buffer, size_t size) {
    EXPECT_EQ(link, "/proc/" + std::to_string(caller.process()) + "/cwd");
    return std::optional(static_cast<ssize_t>(directory.copy(buffer, size)));
  };
  return vdrsim::NamedNode(call, AT_FDCWD, call.argument(1));
}

TEST(NodePath, GoesOnFromTheDirectoryOfTheCaller) {
  EXPECT_EQ(Named(kNode, "/"), Node::Normal);
  EXPECT_EQ(Named(kNode + "_ugrade", "/"), Node::Upgrade);
  EXPECT_EQ(Named("ryn_vdr", "/qorv/devices/char/zaxdriver"), Node::Normal);
  EXPECT_EQ(Named("ryn_vdr", "/qorv/devices/char"), std::nullopt);
  EXPECT_EQ(Named(kNode, ""), std::nullopt);
}

// No path is longer than the kernel takes, wherever it leads back from there.
TEST(NodePath, EndsWhereThereIsNoRoomForAComponent) {
  const std::string back = std::string(200, 'y') + "/../../" + kNode;
  EXPECT_EQ(Named(back, "/" + std::string(4096 - 201 - 1, 'x')), Node::Normal);
  EXPECT_EQ(Named(back, "/" + std::string(4096 - 201, 'x')), std::nullopt);
}

}  // namespace
