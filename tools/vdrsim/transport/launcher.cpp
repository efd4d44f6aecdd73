#include "launcher.h"

#include <fcntl.h>
#include <linux/seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "caller_memory.h"
#include "start_failure.h"

// Named by the headers of Linux 6.6 and later.
#ifndef SECCOMP_IOCTL_NOTIF_SET_FLAGS
#define SECCOMP_IOCTL_NOTIF_SET_FLAGS SECCOMP_IOW(4, __u64)
#define SECCOMP_USER_NOTIF_FD_SYNC_WAKE_UP (1UL << 0)
#endif

namespace vdrsim {

namespace {

// What the child tells about the way to its supervision; the last step brings the listener along.
enum class Step : int { Privileges, Filter, Ready };
struct Progress {
  Step step;
  int error;
};

std::vector<char*> AsArguments(const std::vector<std::string>& texts);
[[noreturn]] void BecomeCommand(std::vector<char*>& arguments, const RunSignals& signals,
                                std::vector<sock_filter>& filter, int parent);
void SayUnusable(const char* command, int error);
bool SendProgress(int parent, Progress progress, const UniqueFd& listener);
Progress ReceiveProgress(int child, UniqueFd& listener);
void CheckInjection(int listener, const DeviceNodes& nodes);
void CheckMemory(pid_t child);
void WakeUpInStep(int listener);

}  // namespace

Launched Launch(const std::vector<std::string>& arguments, Scope scope, const RunSignals& signals,
                const DeviceNodes& nodes) {
  std::vector<sock_filter> filter = SupervisedCallsFilter(scope);
  std::vector<char*> prepared = AsArguments(arguments);
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  if (setenv("VDRSIM", "1", 1) != 0) FailStart("cannot set VDRSIM in the environment", errno);

  int ends[2];
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
    FailStart("cannot create a socket pair", errno);
  }
  UniqueFd parentEnd(ends[0]);
  UniqueFd childEnd(ends[1]);
  const pid_t child = fork();
  if (child < 0) FailStart("cannot start a process", errno);
  if (child == 0) {
    parentEnd.Close();
    BecomeCommand(prepared, signals, filter, childEnd.get());
  }
  childEnd.Close();

  Launched launched(child, std::move(parentEnd));
  const Progress progress = ReceiveProgress(launched.leave.get(), launched.listener);
  if (progress.step == Step::Privileges) FailStart("cannot set no_new_privs", progress.error);
  if (progress.step == Step::Filter) FailFilter(progress.error);
  CheckInjection(launched.listener.get(), nodes);
  CheckMemory(child);
  WakeUpInStep(launched.listener.get());
  return launched;
}

Launched::~Launched() {
  if (!leave) return;
  leave.Close();
  waitpid(command, nullptr, 0);
}

void Launched::Begin() {
  send(leave.get(), "", 1, MSG_NOSIGNAL);
  leave.Close();
}

namespace {

std::vector<char*> AsArguments(const std::vector<std::string>& texts) {
  std::vector<char*> pointers(texts.size() + 1);
  std::ranges::transform(texts, pointers.begin(),
                         [](const std::string& text) { return const_cast<char*>(text.c_str()); });
  return pointers;
}

// Once the filter is there, each call that it holds up waits for the parent.
Progress Confine(std::vector<sock_filter>& filter, UniqueFd& listener) {
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return {Step::Privileges, errno};
  listener = UniqueFd(InstallFilter(filter));
  if (!listener) return {Step::Filter, errno};
  return {Step::Ready, 0};
}

// From here on this is another process, in which nothing may be thrown, allocated or handed back.
void BecomeCommand(std::vector<char*>& arguments, const RunSignals& signals,
                   std::vector<sock_filter>& filter, int parent) {
  UniqueFd listener;
  const Progress progress = Confine(filter, listener);
  if (!SendProgress(parent, progress, listener)) _exit(EXIT_FAILURE);
  listener.Close();
  // None comes when something is missing.
  char leave = 0;
  if (recv(parent, &leave, sizeof leave, 0) != sizeof leave) _exit(EXIT_FAILURE);

  signals.Restore();
  execvp(arguments[0], arguments.data());
  const int error = errno;
  SayUnusable(arguments[0], error);
  _exit(error == ENOENT ? 127 : 126);
}

void SayUnusable(const char* command, int error) {
  const char* parts[] = {"vdrsim: ", command, ": ", strerrordesc_np(error), "\n"};
  iovec line[std::size(parts)];
  for (size_t i = 0; i < std::size(parts); ++i) {
    line[i] = {const_cast<char*>(parts[i]), std::strlen(parts[i])};
  }
  (void)!writev(STDERR_FILENO, line, std::size(line));
}

// What the child tells, with room for the listener.
struct Message {
  Message() {
    header.msg_iov = &content;
    header.msg_iovlen = 1;
    header.msg_control = control;
    header.msg_controllen = sizeof control;
  }
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;

  Progress progress{};
  iovec content{&progress, sizeof progress};
  alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
  msghdr header{};
};

bool SendProgress(int parent, Progress progress, const UniqueFd& listener) {
  Message message;
  message.progress = progress;
  if (!listener) {
    message.header.msg_controllen = 0;
  } else {
    cmsghdr* along = CMSG_FIRSTHDR(&message.header);
    along->cmsg_level = SOL_SOCKET;
    along->cmsg_type = SCM_RIGHTS;
    const int descriptor = listener.get();
    along->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(along), &descriptor, sizeof descriptor);
  }
  return sendmsg(parent, &message.header, MSG_NOSIGNAL) == sizeof message.progress;
}

Progress ReceiveProgress(int child, UniqueFd& listener) {
  Message message;
  if (recvmsg(child, &message.header, MSG_CMSG_CLOEXEC) != sizeof message.progress) {
    throw StartFailure("the process that was to become the command ended before it could");
  }
  if (const cmsghdr* along = CMSG_FIRSTHDR(&message.header)) {
    int received = -1;
    std::memcpy(&received, CMSG_DATA(along), sizeof received);
    listener = UniqueFd(received);
  }
  return message.progress;
}

// No call waits yet, so a kernel that can inject and answer in one step finds nobody to answer, and
// one that can't rejects the flag.
void CheckInjection(int listener, const DeviceNodes& nodes) {
  const UniqueFd opened = nodes.Open(Node::Normal, O_RDWR);
  if (!opened) FailStart("cannot open a memory file anew through /proc/self/fd", errno);
  seccomp_notif_addfd addition{};
  addition.flags = SECCOMP_ADDFD_FLAG_SEND;
  addition.srcfd = static_cast<uint32_t>(opened.get());
  if (ioctl(listener, SECCOMP_IOCTL_NOTIF_ADDFD, &addition) < 0 && errno != ENOENT) {
    FailStart("cannot inject a descriptor into a supervised process", errno,
              "it takes Linux 5.14 or later");
  }
}

void CheckMemory(pid_t child) {
  // The child has it in the same place.
  static constexpr std::byte kProbe{};
  std::array<std::byte, sizeof kProbe> seen{};
  if (ReadMemory(child, reinterpret_cast<uint64_t>(&kProbe), seen)) return;
  FailStart("cannot read the memory of the command", errno,
            "a container must allow process_vm_readv, and kernel.yama.ptrace_scope must be 0 or 1");
}

// Caller and supervisor take turns; this tells the scheduler so. It only makes a run faster, and
// kernels before 6.6 don't know it.
void WakeUpInStep(int listener) {
  ioctl(listener, SECCOMP_IOCTL_NOTIF_SET_FLAGS, SECCOMP_USER_NOTIF_FD_SYNC_WAKE_UP);
}

}  // namespace

}  // namespace vdrsim
