/*
 * Put before the C library by LD_PRELOAD: a program is told to terminate when it is about to wait.
 */
#define _GNU_SOURCE
#include <poll.h>
#include <signal.h>
#include <stddef.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { kBytesOfMask = 8 };

int ppoll(struct pollfd* polled, nfds_t count, const struct timespec* patience,
          const sigset_t* mask) {
  (void)raise(SIGTERM);
  return (int)syscall(SYS_ppoll, polled, count, patience, mask, kBytesOfMask);
}
