#include "kernel.h"

using transport_test::Kernel;
using transport_test::WatchedKernel;

thread_local Kernel* WatchedKernel::watched = nullptr;

// The linker leads each call to the second of these, and the second to the call itself by the name of
// the first. What takes any number of arguments is handed on with as many as are used here.
#define STANDS_BEFORE(Result, name, parameters, arguments)                                         \
  Result __real_##name parameters;                                                                 \
  Result __wrap_##name parameters {                                                                \
    const Kernel* const kernel = WatchedKernel::OfThisThread();                                    \
    const auto result = kernel && kernel->name ? kernel->name arguments : std::optional<Result>(); \
    return result ? *result : __real_##name arguments;                                             \
  }

extern "C" {

STANDS_BEFORE(int, fchmod, (int file, mode_t mode), (file, mode))
STANDS_BEFORE(int, ioctl, (int file, unsigned long request, void* data), (file, request, data))
STANDS_BEFORE(int, isatty, (int file), (file))
STANDS_BEFORE(int, kill, (pid_t process, int signal), (process, signal))
STANDS_BEFORE(int, memfd_create, (const char* name, unsigned flags), (name, flags))
STANDS_BEFORE(int, nanosleep, (const timespec* time, timespec* left), (time, left))
STANDS_BEFORE(int, open, (const char* path, int flags), (path, flags))
STANDS_BEFORE(int, poll, (pollfd * sources, nfds_t count, int timeout), (sources, count, timeout))
STANDS_BEFORE(int, prctl,
              (int option, unsigned long value, unsigned long second, unsigned long third,
               unsigned long fourth),
              (option, value, second, third, fourth))
STANDS_BEFORE(ssize_t, pread, (int file, void* buffer, size_t size, off_t offset),
              (file, buffer, size, offset))
STANDS_BEFORE(ssize_t, process_vm_readv,
              (pid_t process, const iovec* local, unsigned long localCount, const iovec* remote,
               unsigned long remoteCount, unsigned long flags),
              (process, local, localCount, remote, remoteCount, flags))
STANDS_BEFORE(ssize_t, process_vm_writev,
              (pid_t process, const iovec* local, unsigned long localCount, const iovec* remote,
               unsigned long remoteCount, unsigned long flags),
              (process, local, localCount, remote, remoteCount, flags))
STANDS_BEFORE(ssize_t, readlink, (const char* path, char* buffer, size_t size),
              (path, buffer, size))
STANDS_BEFORE(ssize_t, recvmsg, (int socket, msghdr* message, int flags), (socket, message, flags))
STANDS_BEFORE(int, seccomp_export_bpf, (void* filter, int file), (filter, file))
STANDS_BEFORE(void*, seccomp_init, (uint32_t action), (action))
STANDS_BEFORE(ssize_t, send, (int socket, const void* bytes, size_t size, int flags),
              (socket, bytes, size, flags))
STANDS_BEFORE(ssize_t, sendmsg, (int socket, const msghdr* message, int flags),
              (socket, message, flags))
STANDS_BEFORE(int, setenv, (const char* name, const char* value, int replace),
              (name, value, replace))
STANDS_BEFORE(int, signalfd, (int file, const sigset_t* signals, int flags), (file, signals, flags))
STANDS_BEFORE(int, socketpair, (int domain, int type, int protocol, int* ends),
              (domain, type, protocol, ends))
STANDS_BEFORE(int, statx,
              (int directory, const char* path, int flags, unsigned mask, struct statx* status),
              (directory, path, flags, mask, status))
STANDS_BEFORE(long, syscall,
              (long number, long first, long second, long third, long fourth, long fifth),
              (number, first, second, third, fourth, fifth))
STANDS_BEFORE(ssize_t, write, (int file, const void* bytes, size_t size), (file, bytes, size))

// std::chrono::steady_clock::now()
int64_t __real__ZNSt6chrono3_V212steady_clock3nowEv();
int64_t __wrap__ZNSt6chrono3_V212steady_clock3nowEv() {
  const Kernel* const kernel = WatchedKernel::OfThisThread();
  const auto result = kernel && kernel->now ? kernel->now() : std::optional<int64_t>();
  return result ? *result : __real__ZNSt6chrono3_V212steady_clock3nowEv();
}

// What open() becomes when its arguments are checked.
int __real___open_2(const char* path, int flags);
int __wrap___open_2(const char* path, int flags) { return __wrap_open(path, flags); }
}
