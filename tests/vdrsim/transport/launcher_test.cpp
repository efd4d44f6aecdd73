#include "transport/launcher.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "caller.h"
#include "failures.h"
#include "kernel.h"
#include "usual_signals.h"

namespace {

using transport_test::Fail;
using transport_test::FailsWith;
using transport_test::SharedPages;
using transport_test::WatchedKernel;
using vdrsim::DeviceNodes;
using vdrsim::Launch;
using vdrsim::Launched;
using vdrsim::RunSignals;
using vdrsim::Scope;

// Requests of a listener.
constexpr unsigned long kAddDescriptor = 0x40182103;
constexpr unsigned long kSetFlags = 0x40082104;

// What a message holds, and what it has room for.
struct Message {
  std::array<int32_t, 2> stepAndError{};
  uint64_t parts = 0;
  uint64_t bytes = 0;
  uint64_t room = 0;
  uint64_t along = 0;

  bool operator==(const Message&) const = default;
};

Message In(const msghdr& message) {
  const cmsghdr* const along = CMSG_FIRSTHDR(&message);
  Message seen{.parts = message.msg_iovlen,
               .bytes = message.msg_iov->iov_len,
               .room = message.msg_controllen,
               .along = along ? along->cmsg_len : 0};
  std::memcpy(seen.stepAndError.data(), message.msg_iov->iov_base, sizeof seen.stepAndError);
  return seen;
}

class Launcher : public testing::Test {
 protected:
  ~Launcher() override { signals_.Restore(); }

  Launched Start() const { return Launch({"true"}, Scope::ReadWriteOpens, signals_, nodes_); }

  std::string Failure() const {
    return transport_test::StartFailureOf([this] { const Launched launched = Start(); });
  }

  // What the child sends; it is seen here in pages that it has in common with the test.
  const Message& Sent() const { return *reinterpret_cast<const Message*>(pages_.bytes().data()); }
  void LookAtMessages() {
    kernel_->sendmsg = [this](int, const msghdr* message, int) {
      const Message sent = In(*message);
      std::memcpy(pages_.bytes().data(), &sent, sizeof sent);
      return std::optional<ssize_t>();
    };
    kernel_->recvmsg = [this](int, msghdr* message, int) {
      room_ = In(*message);
      return std::optional<ssize_t>();
    };
  }

  UsualSignals usual_{};
  SharedPages pages_{1};
  Message room_{};
  DeviceNodes nodes_{true};
  RunSignals signals_{};
  WatchedKernel kernel_{};
};

TEST_F(Launcher, SendsTheListenerAlongWithTheLastStep) {
  LookAtMessages();
  EXPECT_TRUE(Start().listener);
  EXPECT_EQ(Sent(), (Message{{2, 0}, 1, 8, 24, 20}));
  EXPECT_EQ(room_.parts, 1);
  EXPECT_EQ(room_.bytes, 8);
  EXPECT_EQ(room_.room, 24);
}

TEST_F(Launcher, SendsAnErrorAlone) {
  LookAtMessages();
  kernel_->prctl = [](int option, auto...) -> std::optional<int> {
    return option == PR_SET_NO_NEW_PRIVS ? Fail(EPERM) : std::nullopt;
  };
  EXPECT_EQ(Failure(), "cannot set no_new_privs: Operation not permitted");
  EXPECT_EQ(Sent(), (Message{{0, EPERM}, 1, 8, 0, 0}));
}

// What a kernel can do is asked when nobody waits for it.
TEST_F(Launcher, AsksTheKernelWhatItCanDoBeforeTheCommandBegins) {
  std::vector<seccomp_notif_addfd> additions;
  std::vector<void*> flags;
  bool isNode = false;
  kernel_->ioctl = [&](int, unsigned long request, void* data) {
    if (request == kAddDescriptor) {
      additions.push_back(*static_cast<const seccomp_notif_addfd*>(data));
      isNode = nodes_.Identify(getpid(), additions.back().srcfd).what ==
               vdrsim::Behind::What::SimulatedNode;
    }
    if (request == kSetFlags) flags.push_back(data);
    return std::optional<int>();
  };
  const Launched launched = Start();
  ASSERT_EQ(additions.size(), 1);
  EXPECT_EQ(additions[0].id, 0);
  EXPECT_EQ(additions[0].flags, SECCOMP_ADDFD_FLAG_SEND);
  EXPECT_TRUE(isNode);
  EXPECT_EQ(flags, std::vector{reinterpret_cast<void*>(1)});
}

TEST_F(Launcher, SaysWhatTheKernelCannotDo) {
  kernel_->ioctl = [](int, unsigned long request, void*) -> std::optional<int> {
    return request == kAddDescriptor ? Fail(EINVAL) : std::nullopt;
  };
  EXPECT_EQ(
      Failure(),
      "cannot inject a descriptor into a supervised process: Invalid argument (it takes Linux "
      "5.14 or later)");
  kernel_->ioctl = {};
  kernel_->process_vm_readv = FailsWith(EPERM);
  EXPECT_EQ(
      Failure(),
      "cannot read the memory of the command: Operation not permitted (a container must allow "
      "process_vm_readv, and kernel.yama.ptrace_scope must be 0 or 1)");
}

TEST_F(Launcher, SaysThatItsOwnMeansAreMissing) {
  kernel_->setenv = FailsWith(ENOMEM);
  EXPECT_EQ(Failure(), "cannot set VDRSIM in the environment: Cannot allocate memory");
  kernel_->setenv = {};
  kernel_->socketpair = FailsWith(ENOMEM);
  EXPECT_EQ(Failure(), "cannot create a socket pair: Cannot allocate memory");
}

// Also where it was something else before.
TEST_F(Launcher, MarksTheEnvironmentAndAdoptsWhatIsLeftBehind) {
  setenv("VDRSIM", "yes", 1);
  std::vector<unsigned long> adopts;
  std::vector<int> ends;
  kernel_->prctl = [&](int option, unsigned long value, auto...) {
    if (option == PR_SET_CHILD_SUBREAPER) adopts.push_back(value);
    return std::optional<int>();
  };
  kernel_->socketpair = [&](int domain, int type, int protocol, int*) {
    ends = {domain, type, protocol};
    return std::optional<int>();
  };
  const Launched launched = Start();
  EXPECT_STREQ(getenv("VDRSIM"), "1");
  EXPECT_EQ(adopts, std::vector{1UL});
  EXPECT_EQ(ends, (std::vector<int>{AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0}));
}

TEST_F(Launcher, GivesLeaveByOneByte) {
  std::vector<size_t> sizes;
  kernel_->send = [&](int, const void*, size_t size, int) {
    sizes.push_back(size);
    return std::optional<ssize_t>();
  };
  pid_t process = 0;
  {
    Launched launched = Start();
    launched.Begin();
    EXPECT_FALSE(launched.leave);
    process = launched.command;
  }
  EXPECT_EQ(sizes, std::vector<size_t>{1});
  int status = -1;
  EXPECT_EQ(waitpid(process, &status, 0), process) << "nobody else has waited for it";
  EXPECT_EQ(status, 0);
}

TEST_F(Launcher, LeavesNothingBehindWithoutLeave) {
  pid_t process = 0;
  {
    const Launched launched = Start();
    process = launched.command;
  }
  EXPECT_EQ(waitpid(process, nullptr, 0), -1);
  EXPECT_EQ(errno, ECHILD);
}

// As when vdrsim is killed before the command begins.
TEST_F(Launcher, LeavesNothingBehindWhenItEndsItself) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  if (fork() == 0) {
    const Launched launched = Start();
    _exit(0);
  }
  close(ends[1]);
  char none = 0;
  EXPECT_EQ(read(ends[0], &none, 1), 0) << "whoever has the other end has ended";
  close(ends[0]);
  while (wait(nullptr) > 0) {
  }
}

}  // namespace
