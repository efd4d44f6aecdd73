#include "filter.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <linux/seccomp.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "start_failure.h"
#include "unique_fd.h"

namespace vdrsim {

namespace {

struct ReleaseFilter {
  void operator()(void* filter) const { seccomp_release(filter); }
};

long Seccomp(unsigned operation, unsigned long flags, void* argument) {
  return syscall(SYS_seccomp, operation, flags, argument);
}

// libseccomp reports its errors as negative errno values.
void Require(int result) {
  if (result < 0) FailStart("cannot build the seccomp filter", -result);
}

// Requests of more than eight bits that Linux answers by itself where the node stands for a plain
// file, and would refuse on a device.
constexpr uint64_t kPlainFileRequests[] = {
    FIONREAD,   FIOQSIZE, FS_IOC_GETFLAGS, FS_IOC_SETFLAGS, FS_IOC_FSGETXATTR, FS_IOC_FSSETXATTR,
    0x80111500,  // the UUID of the file system, Linux 6.9 and later
};

constexpr int kLooks[] = {
    SCMP_SYS(stat),   SCMP_SYS(lstat),     SCMP_SYS(newfstatat), SCMP_SYS(statx),
    SCMP_SYS(access), SCMP_SYS(faccessat), SCMP_SYS(faccessat2),
};

void HoldUp(void* filter, int call) { Require(seccomp_rule_add(filter, SCMP_ACT_NOTIFY, call, 0)); }

// Holds up what has `value` in the bits of the mask of one argument.
void HoldUpWhere(void* filter, int call, unsigned argument, uint64_t mask, uint64_t value) {
  const scmp_arg_cmp condition{argument, SCMP_CMP_MASKED_EQ, mask, value};
  Require(seccomp_rule_add_array(filter, SCMP_ACT_NOTIFY, call, 1, &condition));
}

// The kernel knows 32 bits of a request number, whatever a caller's sign extension adds.
void HoldUpRequests(void* filter) {
  constexpr uint64_t kAllBits = 0xffffffff;
  constexpr uint64_t kCodeBits = 0xff;
  HoldUpWhere(filter, SCMP_SYS(ioctl), 1, kAllBits & ~kCodeBits, 0);
  for (const uint64_t request : kPlainFileRequests) {
    HoldUpWhere(filter, SCMP_SYS(ioctl), 1, kAllBits, request);
  }
}

// openat2 has its flags in memory, where a filter can't see them, and hardly anyone calls creat.
void HoldUpOpens(void* filter, Scope scope) {
  HoldUp(filter, SCMP_SYS(openat2));
  HoldUp(filter, SCMP_SYS(creat));
  if (scope == Scope::EveryOpenAndLook) {
    HoldUp(filter, SCMP_SYS(open));
    HoldUp(filter, SCMP_SYS(openat));
    for (const int call : kLooks) HoldUp(filter, call);
  } else {
    HoldUpWhere(filter, SCMP_SYS(open), 1, O_RDWR, O_RDWR);
    HoldUpWhere(filter, SCMP_SYS(openat), 2, O_RDWR, O_RDWR);
  }
}

}  // namespace

std::vector<sock_filter> SupervisedCallsFilter(Scope scope) {
  seccomp_notif_sizes sizes{};
  if (Seccomp(SECCOMP_GET_NOTIF_SIZES, 0, &sizes) != 0) FailFilter(errno);

  const std::unique_ptr<void, ReleaseFilter> filter(seccomp_init(SCMP_ACT_ALLOW));
  if (!filter) FailStart("cannot build the seccomp filter", ENOMEM);
  Require(seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_ALLOW));
  HoldUpRequests(filter.get());
  HoldUpOpens(filter.get(), scope);

  const UniqueFd exported(memfd_create("vdrsim-filter", MFD_CLOEXEC));
  if (!exported) FailStart("cannot create a memory file", errno);
  Require(seccomp_export_bpf(filter.get(), exported.get()));
  const off_t end = lseek(exported.get(), 0, SEEK_END);
  if (end == -1) FailStart("cannot read the seccomp filter", errno);
  const auto length = static_cast<size_t>(end);
  std::vector<sock_filter> program(length / sizeof(sock_filter));
  if (pread(exported.get(), program.data(), length, 0) != end) {
    FailStart("cannot read the seccomp filter", EIO);
  }
  return program;
}

// Without WAIT_KILLABLE_RECV (Linux 5.19) a signal that arrives while a command is carried out
// makes the kernel start the ioctl again, and the command would be carried out twice. libseccomp
// can't ask for it, hence the bare system call.
int InstallFilter(std::vector<sock_filter>& filter) {
  sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
  constexpr unsigned long flags = SECCOMP_FILTER_FLAG_NEW_LISTENER;
  long listener =
      Seccomp(SECCOMP_SET_MODE_FILTER, flags | SECCOMP_FILTER_FLAG_WAIT_KILLABLE_RECV, &program);
  if (listener < 0 && errno == EINVAL) {
    listener = Seccomp(SECCOMP_SET_MODE_FILTER, flags, &program);
  }
  return static_cast<int>(listener);
}

void FailFilter(int error) {
  if (error == EBUSY) {
    throw StartFailure(
        "already inside a vdrsim run, or under another supervisor of system calls: only one can "
        "be");
  }
  FailStart("cannot supervise system calls", error,
            "it takes Linux 5.14 or later with CONFIG_SECCOMP_FILTER, and a container must allow "
            "seccomp");
}

}  // namespace vdrsim
