// The least supervisor of a run: it makes the system calls that vdrsim makes for a command and thinks
// about nothing. It has one caller memory road, one device, no state, and answers that are always the
// same.
//
// floor_supervisor COMMAND...
#include <errno.h>
#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

#ifndef SECCOMP_IOCTL_NOTIF_SET_FLAGS
#define SECCOMP_IOCTL_NOTIF_SET_FLAGS SECCOMP_IOW(4, __u64)
#endif

enum { kPiece = 128 * 1024 };
static unsigned char reply_bytes[2867200 * 39];
static int listener;
static int device;

// The codes that the load sends are those of two lists and of a number.
static uint64_t reply_size(uint32_t code) {
  if (code == 0) return 1001 * 577;
  if (code == 96) return 2867200ULL * 39;
  return code == 9 ? 4 : 0;
}

static int install_filter(void) {
  struct sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_ioctl, 0, 2),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, args[1])),
      BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 256, 3, 4),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 2),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, args[2])),
      BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_RDWR, 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF)};
  const struct sock_fprog filter = {sizeof program / sizeof *program, program};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  return (int)syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER,
                      SECCOMP_FILTER_FLAG_NEW_LISTENER | SECCOMP_FILTER_FLAG_WAIT_KILLABLE_RECV,
                      &filter);
}

static void respond(uint64_t id, int error, uint32_t flags) {
  struct seccomp_notif_resp response = {.id = id, .error = -error, .flags = flags};
  ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &response);
}

static int is_waiting(uint64_t id) {
  return ioctl(listener, SECCOMP_IOCTL_NOTIF_ID_VALID, &id) == 0;
}

static void* pointer(uint64_t address) { return (void*)(uintptr_t)address; }

static void answer_open(const struct seccomp_notif* call) {
  static char path[4096];
  const uint64_t address = call->data.args[1];
  const uint64_t first = 4096 - address % 4096;
  const struct iovec local = {path, sizeof path};
  const struct iovec remote[] = {{pointer(address), first},
                                 {pointer(address + first), sizeof path - first}};
  process_vm_readv((pid_t)call->pid, &local, 1, remote, 2, 0);
  if (strncmp(path, "/qorv/", 6) != 0) {
    respond(call->id, 0, SECCOMP_USER_NOTIF_FLAG_CONTINUE);
    return;
  }
  char own[32];
  (void)snprintf(own, sizeof own, "/proc/self/fd/%d", device);
  const int opened = open(own, O_RDWR | O_CLOEXEC);
  struct seccomp_notif_addfd addition = {
      .id = call->id, .flags = SECCOMP_ADDFD_FLAG_SEND, .srcfd = (uint32_t)opened};
  ioctl(listener, SECCOMP_IOCTL_NOTIF_ADDFD, &addition);
  close(opened);
}

static void deliver(const struct seccomp_notif* call, uint64_t reply, uint64_t length_address) {
  const uint64_t total = reply_size((uint32_t)call->data.args[1]);
  uint32_t length = (uint32_t)total;
  for (uint64_t done = 0;;) {
    const uint64_t size = total - done < kPiece ? total - done : kPiece;
    const int is_last = done + size == total;
    const struct iovec local[] = {{reply_bytes + done, size}, {&length, sizeof length}};
    const struct iovec remote[] = {{pointer(reply + done), size},
                                   {pointer(length_address), sizeof length}};
    is_waiting(call->id);
    process_vm_writev((pid_t)call->pid, local, is_last ? 2 : 1, remote, is_last ? 2 : 1, 0);
    if (is_last) return;
    done += size;
  }
}

static void answer_command(const struct seccomp_notif* call) {
  char path[48];
  struct statx status;
  unsigned char envelope[24];
  unsigned char input[968];
  const pid_t caller = (pid_t)call->pid;
  const uint64_t address = call->data.args[2];
  (void)snprintf(path, sizeof path, "/proc/%d/fd/%d", caller, (int)call->data.args[0]);
  statx(AT_FDCWD, path, AT_STATX_DONT_SYNC, STATX_INO | STATX_TYPE, &status);

  struct iovec local = {envelope, sizeof envelope};
  struct iovec remote = {pointer(address), sizeof envelope};
  process_vm_readv(caller, &local, 1, &remote, 1, 0);
  uint64_t reply;
  uint64_t from;
  uint32_t in_length;
  memcpy(&in_length, envelope, sizeof in_length);
  memcpy(&from, envelope + 4, sizeof from);
  memcpy(&reply, envelope + 16, sizeof reply);
  if (in_length > 0) {
    local = (struct iovec){input, in_length};
    remote = (struct iovec){pointer(from), in_length};
    process_vm_readv(caller, &local, 1, &remote, 1, 0);
  }
  syscall(SYS_tgkill, caller, caller, 0);
  is_waiting(call->id);
  (void)snprintf(path, sizeof path, "/proc/%d/task", caller);
  statx(AT_FDCWD, path, AT_STATX_DONT_SYNC, STATX_NLINK, &status);
  deliver(call, reply, address + 12);
  respond(call->id, 0, 0);
}

static void serve(void) {
  struct seccomp_notif call;
  for (;;) {
    memset(&call, 0, sizeof call);
    if (ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &call) != 0) {
      struct pollfd left = {listener, 0, 0};
      if (poll(&left, 1, 0) > 0) return;
    } else if (call.data.nr == SYS_ioctl) {
      answer_command(&call);
    } else {
      answer_open(&call);
    }
  }
}

static _Noreturn void become(char** command, int tell, int leave) {
  char nothing;
  const int filter = install_filter();
  (void)!write(tell, &filter, sizeof filter);
  // Until the other side has taken it.
  (void)!read(leave, &nothing, 1);
  close(filter);
  execvp(command[0], command);
  _exit(127);
}

int main(int argc, char** argv) {
  int told[2];
  int leave[2];
  device = memfd_create("floor", MFD_CLOEXEC);
  memset(reply_bytes, 1, sizeof reply_bytes);
  if (argc < 2 || device < 0 || pipe2(told, O_CLOEXEC) != 0 || pipe2(leave, O_CLOEXEC) != 0)
    return 2;
  const pid_t child = fork();
  if (child == 0) become(argv + 1, told[1], leave[0]);
  int filter = -1;
  if (read(told[0], &filter, sizeof filter) != sizeof filter || filter < 0) return 2;
  listener = (int)syscall(SYS_pidfd_getfd, syscall(SYS_pidfd_open, child, 0), filter, 0);
  if (listener < 0) return 2;
  ioctl(listener, SECCOMP_IOCTL_NOTIF_SET_FLAGS, 1UL);
  (void)!write(leave[1], "", 1);
  serve();
  int status = 0;
  waitpid(child, &status, 0);
  return WEXITSTATUS(status);
}
