#pragma once

#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <time.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace transport_test {

// What stands before a call: what it gives is the result, and without one the call goes on.
template <typename Result, typename... Arguments>
using Place = std::function<std::optional<Result>(Arguments...)>;

// What the transport asks of the kernel and the C library in this thread, and in the processes that
// are forked from it: a test may look at it, and may answer.
struct Kernel {
  using Memory = Place<ssize_t, pid_t, const iovec*, unsigned long, const iovec*, unsigned long,
                       unsigned long>;

  Place<int, int, mode_t> fchmod{};
  Place<int, int, unsigned long, void*> ioctl{};
  Place<int, int> isatty{};
  Place<int, pid_t, int> kill{};
  Place<int, const char*, unsigned> memfd_create{};
  Place<int, const timespec*, timespec*> nanosleep{};
  Place<int64_t> now{};  // of the steady clock, in nanoseconds
  Place<int, const char*, int> open{};
  Place<int, pollfd*, nfds_t, int> poll{};
  Place<int, int, unsigned long, unsigned long, unsigned long, unsigned long> prctl{};
  Place<ssize_t, int, void*, size_t, off_t> pread{};
  Memory process_vm_readv{};
  Memory process_vm_writev{};
  Place<ssize_t, const char*, char*, size_t> readlink{};
  Place<ssize_t, int, msghdr*, int> recvmsg{};
  Place<int, void*, int> seccomp_export_bpf{};
  Place<void*, uint32_t> seccomp_init{};
  Place<ssize_t, int, const void*, size_t, int> send{};
  Place<ssize_t, int, const msghdr*, int> sendmsg{};
  Place<int, const char*, const char*, int> setenv{};
  Place<int, int, const sigset_t*, int> signalfd{};
  Place<int, int, int, int, int*> socketpair{};
  Place<int, int, const char*, int, unsigned, struct statx*> statx{};
  Place<long, long, long, long, long, long, long> syscall{};
  Place<ssize_t, int, const void*, size_t> write{};
};

// As long as it lives, what it has stands before the calls.
class WatchedKernel {
 public:
  WatchedKernel() { watched = &kernel_; }
  WatchedKernel(const WatchedKernel&) = delete;
  ~WatchedKernel() { watched = nullptr; }

  Kernel* operator->() const { return watched; }
  static const Kernel* OfThisThread() { return watched; }

 private:
  static thread_local Kernel* watched;
  Kernel kernel_{};
};

}  // namespace transport_test
