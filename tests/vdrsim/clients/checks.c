#include <errno.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device.h"

static int open_with_how(const char* path, uint64_t flags, uint64_t resolve) {
  struct open_how how = {.flags = flags, .resolve = resolve};
  return (int)syscall(SYS_openat2, AT_FDCWD, path, &how, sizeof how);
}

int check_open_forms(void) {
  static const char* const nodes[] = {NORMAL_NODE, UPGRADE_NODE};
  for (int i = 0; i < 2; ++i) {
#ifdef SYS_open
    EXPECT(answers((int)syscall(SYS_open, nodes[i], O_RDWR, 0)));
#endif
    EXPECT(answers((int)syscall(SYS_openat, AT_FDCWD, nodes[i], O_RDWR, 0)));
    EXPECT(answers((int)syscall(SYS_openat, -1, nodes[i], O_RDWR, 0)));
    EXPECT(answers(open_with_how(nodes[i], O_RDWR, 0)));
    EXPECT(answers(open_with_how(nodes[i], O_RDWR, RESOLVE_NO_SYMLINKS)));
  }
  // Under this flag the path starts at the working directory, where there is no such file.
  EXPECT(open_with_how(NORMAL_NODE, O_RDWR, RESOLVE_IN_ROOT) < 0 && errno == ENOENT);
  EXPECT(syscall(SYS_openat2, AT_FDCWD, NORMAL_NODE, NULL, 24) < 0 && errno == EFAULT);
  EXPECT(open("/qorv/devices/char/zaxdriver/ryn_vd", O_RDWR) < 0 && errno == ENOENT);
  EXPECT(open("/qorv/devices/char/zaxdriver/ryn_vdr_upgrade", O_RDWR) < 0 && errno == ENOENT);
  // The kernel answers this one, and may have the device.
  EXPECT(open("/qorv/devices/char/zaxdriver/ryn_vdr/", O_RDWR) < 0 &&
         (errno == ENOENT || errno == ENOTDIR));
  return 0;
}

int check_open_flags(void) {
  const int plain = open(NORMAL_NODE, O_RDWR);
  const int closing = open(NORMAL_NODE, O_RDWR | O_CLOEXEC | O_NONBLOCK);
  EXPECT(plain >= 0 && closing >= 0 && closing != plain);
  EXPECT(fcntl(plain, F_GETFD) == 0);
  EXPECT(fcntl(closing, F_GETFD) == FD_CLOEXEC);
  EXPECT((fcntl(plain, F_GETFL) & (O_ACCMODE | O_NONBLOCK)) == O_RDWR);
  EXPECT((fcntl(closing, F_GETFL) & (O_ACCMODE | O_NONBLOCK)) == (O_RDWR | O_NONBLOCK));
#ifdef SYS_open
  const long old = syscall(SYS_open, NORMAL_NODE, O_RDWR | O_CLOEXEC, 0);
  EXPECT(fcntl((int)old, F_GETFD) == FD_CLOEXEC);
#endif
  EXPECT(fcntl(plain, F_SETFL, O_NONBLOCK) == 0);
  EXPECT((fcntl(open(NORMAL_NODE, O_RDWR), F_GETFL) & O_NONBLOCK) == 0);

  EXPECT(ioctl(plain, FIOCLEX) == 0 && fcntl(plain, F_GETFD) == FD_CLOEXEC);
  EXPECT(answers(open(NORMAL_NODE, O_RDWR | O_CREAT | O_TRUNC, 0600)));
  EXPECT(open(NORMAL_NODE, O_RDWR | O_CREAT | O_EXCL, 0600) < 0 && errno == EEXIST);
  EXPECT(answers(open(NORMAL_NODE, O_RDWR | O_EXCL)));
  EXPECT(open(NORMAL_NODE, O_RDWR | O_DIRECTORY) < 0 && errno == ENOTDIR);
  // A path alone leads to no datapath: it is there only where the host has the true node.
  EXPECT((open(NORMAL_NODE, O_PATH) >= 0) == (faccessat(AT_FDCWD, NORMAL_NODE, F_OK, 0) == 0));
  EXPECT(!isatty(plain) && errno == ENOTTY);
  EXPECT(write(plain, "x", 1) < 0);

  // Nor is it a place for a program, where the kernel can tell.
  struct stat status;
  const int kept = memfd_create("other", 8);
  EXPECT(fstat(plain, &status) == 0 && (kept < 0 || (status.st_mode & 0111) == 0));
  close(kept);

  const struct rlimit few = {.rlim_cur = (rlim_t)plain, .rlim_max = (rlim_t)plain};
  EXPECT(setrlimit(RLIMIT_NOFILE, &few) == 0);
  EXPECT(open(NORMAL_NODE, O_RDWR) < 0 && errno == EMFILE);
  return 0;
}

static int pass_through_socket(int descriptor) {
  int ends[2];
  EXPECT(socketpair(AF_UNIX, SOCK_DGRAM, 0, ends) == 0);
  char byte = 0;
  struct iovec content = {&byte, 1};
  union {
    struct cmsghdr header;
    char room[CMSG_SPACE(sizeof(int))];
  } control = {0};
  struct msghdr message = {.msg_iov = &content,
                           .msg_iovlen = 1,
                           .msg_control = &control,
                           .msg_controllen = sizeof control};
  control.header.cmsg_level = SOL_SOCKET;
  control.header.cmsg_type = SCM_RIGHTS;
  control.header.cmsg_len = CMSG_LEN(sizeof(int));
  memcpy(CMSG_DATA(&control.header), &descriptor, sizeof(int));
  EXPECT(sendmsg(ends[0], &message, 0) == 1);
  EXPECT(recvmsg(ends[1], &message, 0) == 1);
  memcpy(&descriptor, CMSG_DATA(&control.header), sizeof(int));
  return descriptor;
}

int check_shared_descriptors(void) {
  const int device = open(NORMAL_NODE, O_RDWR);
  EXPECT(device >= 0);
  const int copy = dup(device);
  const int passed = pass_through_socket(device);
  close(device);
  EXPECT(answers(copy));
  EXPECT(answers(passed));
  EXPECT(dup2(copy, 200) == 200 && answers(200));
  EXPECT(get_word(device, 9, NULL) == EBADF);

  const pid_t child = fork();
  if (child == 0) _exit(answers(copy) ? 7 : 8);
  int status;
  EXPECT(waitpid(child, &status, 0) == child && WEXITSTATUS(status) == 7);
  return 0;
}

int check_other_files(void) {
  FILE* stream = tmpfile();
  EXPECT(stream != NULL);
  const int file = fileno(stream);
  char text[6] = "";
  EXPECT(pwrite(file, "hello", 5, 0) == 5 && pread(file, text, 5, 0) == 5);
  EXPECT(strcmp(text, "hello") == 0);
  // The block size of a file system has the request number of a command.
  int block_size = 0;
  EXPECT(ioctl(file, 2, &block_size) == 0 && block_size >= 512);
  EXPECT(ioctl(file, 9, NULL) < 0 && errno == ENOTTY);

  // A node is a file in memory too, but another one.
  const int memory = memfd_create("other", 0);
  EXPECT(memory >= 0 && ioctl(memory, 9, NULL) < 0 && errno == ENOTTY);

  int ends[2];
  EXPECT(pipe(ends) == 0 && write(ends[1], "12345", 5) == 5);
  int waiting = 0;
  EXPECT(ioctl(ends[0], FIONREAD, &waiting) == 0 && waiting == 5);
  EXPECT(!isatty(ends[0]) && errno == ENOTTY);
  EXPECT(ioctl(1000, FIONREAD, &waiting) < 0 && errno == EBADF);
  EXPECT(open("/nonesuch", O_RDONLY) < 0 && errno == ENOENT);
  EXPECT(open((const char*)8, O_RDONLY) < 0 && errno == EFAULT);
  EXPECT(open("/", O_WRONLY) < 0 && errno == EISDIR);
  const int directory = open("/proc/self", O_RDONLY | O_DIRECTORY);
  EXPECT(openat(directory, "status", O_RDONLY) >= 0);
  return 0;
}

static void* add_instances(void* argument) {
  for (int i = 0; i < 50; ++i) {
    char name[64];
    (void)snprintf(name, sizeof name, "thread-%d-%d", (int)(intptr_t)argument, i);
    EXPECT(set_instance(name, (uint32_t)i) == 0);
  }
  return NULL;
}

int check_threads(void) {
  pthread_t threads[8];
  for (intptr_t i = 0; i < 8; ++i) {
    EXPECT(pthread_create(&threads[i], NULL, add_instances, (void*)i) == 0);
  }
  for (int i = 0; i < 8; ++i) EXPECT(pthread_join(threads[i], NULL) == 0);
  static unsigned char records[577577];
  uint32_t length = sizeof records;
  EXPECT(command_on_name(open(NORMAL_NODE, O_RDWR), 0, "", records, &length) == 0);
  EXPECT(length == 400 * 577);
  return 0;
}

static void* stay(void* argument) {
  for (;;) pause();
  return argument;
}

// The first thread of several can leave its number to another program.
int check_beside_threads(void) {
  pthread_t thread;
  EXPECT(pthread_create(&thread, NULL, stay, NULL) == 0);
  EXPECT(answers(open(NORMAL_NODE, O_RDWR)));
  EXPECT(set_instance("edge-1", 1) == 0 && delete_instance("edge-1") == 0);
  return 0;
}

static volatile sig_atomic_t signals;

static void count_signal(int number) {
  (void)number;
  ++signals;
}

// A call that a signal ended with EINTR has done nothing, so it may be made again.
static int until_not_interrupted(int (*call)(const char* name)) {
  int error;
  do {
    error = call("storm");
  } while (error == EINTR);
  return error;
}

static int create_storm(const char* name) { return set_instance(name, 1); }

// A command that were carried out twice would delete what it has deleted before.
int check_storm(void) {
  static const int handling[] = {SA_RESTART, 0};
  for (int i = 0; i < 2; ++i) {
    const struct sigaction action = {.sa_handler = count_signal, .sa_flags = handling[i]};
    EXPECT(sigaction(SIGALRM, &action, NULL) == 0);
    const struct itimerval often = {{0, 150}, {0, 150}};
    EXPECT(setitimer(ITIMER_REAL, &often, NULL) == 0);
    for (int round = 0; round < 4000; ++round) {
      EXPECT(until_not_interrupted(create_storm) == 0);
      EXPECT(until_not_interrupted(delete_instance) == 0);
    }
  }
  EXPECT(signals > 100);
  return 0;
}

// Returns how many signals came of which one was sent.
int count_signals(int number) {
  const struct sigaction action = {.sa_handler = count_signal};
  sigset_t counted;
  sigset_t before;
  sigemptyset(&counted);
  sigaddset(&counted, number);
  EXPECT(sigprocmask(SIG_BLOCK, &counted, &before) == 0);
  EXPECT(sigaction(number, &action, NULL) == 0);
  EXPECT(write(STDOUT_FILENO, "ready\n", 6) == 6);
  while (signals == 0) sigsuspend(&before);
  EXPECT(sigprocmask(SIG_SETMASK, &before, NULL) == 0);
  usleep(200000);
  return signals;
}

// Prints the value that a signal brings.
int print_value(int number) {
  sigset_t awaited;
  siginfo_t signal;
  sigemptyset(&awaited);
  sigaddset(&awaited, number);
  EXPECT(sigprocmask(SIG_BLOCK, &awaited, NULL) == 0);
  EXPECT(write(STDOUT_FILENO, "ready\n", 6) == 6);
  EXPECT(sigwaitinfo(&awaited, &signal) == number && signal.si_code == SI_QUEUE);
  printf("%x\n", (unsigned)signal.si_value.sival_int);
  return 0;
}
