#include <errno.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/openat2.h>
#include <stdio.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "device.h"

static int openat2_with(const struct open_how* how, size_t length) {
  return (int)syscall(SYS_openat2, AT_FDCWD, NORMAL_NODE, how, length);
}

static void openat2_like_linux(void) {
  struct {
    struct open_how how;
    unsigned char tail[4096 - sizeof(struct open_how)];
  } longer = {.how = {.flags = O_RDWR}};
  EXPECT(answers(openat2_with(&longer.how, 32)));
  EXPECT(answers(openat2_with(&longer.how, 4096)));
  EXPECT(openat2_with(&longer.how, 23) < 0 && errno == EINVAL);
  EXPECT(openat2_with(&longer.how, 4097) < 0 && errno == E2BIG);
  static const struct open_how much[4096];
  EXPECT(openat2_with(much, sizeof much) < 0 && errno == E2BIG);
  longer.tail[3] = 1;
  EXPECT(openat2_with(&longer.how, 32) < 0 && errno == E2BIG);

  const struct open_how wrong[] = {{.flags = 1ULL << 40},
                                   {.flags = O_RDWR, .mode = 0600},
                                   {.flags = O_RDWR, .resolve = 1ULL << 40},
                                   {.flags = O_RDWR, .resolve = RESOLVE_BENEATH | RESOLVE_IN_ROOT}};
  for (size_t i = 0; i < sizeof wrong / sizeof *wrong; ++i) {
    EXPECT(openat2_with(&wrong[i], sizeof *wrong) < 0 && errno == EINVAL);
  }
}

// The longest path that there can be, and one that is too long.
static void long_paths(void) {
  static char path[4098];
  memset(path, '/', sizeof path);
  memcpy(path + sizeof path - sizeof NORMAL_NODE, NORMAL_NODE, sizeof NORMAL_NODE);
  EXPECT(strlen(path) == 4097 && strlen(path + 2) == 4095);
  EXPECT(answers(open(path + 2, O_RDWR)));
  EXPECT(open(path + 1, O_RDWR) < 0 && errno == ENAMETOOLONG);
}

int check_spellings(void) {
  static const char* const nodes[] = {"//qorv/devices/char/zaxdriver/ryn_vdr",
                                      "/qorv//devices/char///zaxdriver/ryn_vdr",
                                      "/./qorv/devices/./char/zaxdriver/./ryn_vdr_ugrade",
                                      "/../qorv/devices/../devices/char/zaxdriver/ryn_vdr"};
  for (size_t i = 0; i < sizeof nodes / sizeof *nodes; ++i) EXPECT(answers(open(nodes[i], O_RDWR)));
  static const char* const others[] = {"/qorv/devices/char/zaxdriver/ryn_vdr/",
                                       "/qorv/devices/char/zaxdriver/ryn_vdr/.",
                                       "/qorv/devices/char/zaxdriver/ryn_vdr/../zaxdriver",
                                       "/qorv/devices/char/../ryn_vdr",
                                       "ryn_vdr",
                                       ""};
  for (size_t i = 0; i < sizeof others / sizeof *others; ++i) EXPECT(open(others[i], O_RDWR) < 0);

  EXPECT(chdir("/usr") == 0);
  EXPECT(answers(open("../qorv/devices/char/zaxdriver/ryn_vdr", O_RDWR)));
  EXPECT(open("qorv/devices/char/zaxdriver/ryn_vdr", O_RDWR) < 0);
  const int root = open("/", O_RDONLY | O_DIRECTORY);
  EXPECT(answers(openat(root, "qorv/devices/char/zaxdriver/ryn_vdr", O_RDWR)));
  const struct open_how how = {.flags = O_RDWR};
  EXPECT(answers((int)syscall(SYS_openat2, root, NORMAL_NODE + 1, &how, sizeof how)));
#ifdef SYS_creat
  EXPECT(answers((int)syscall(SYS_creat, NORMAL_NODE, 0600)));
#endif
  long_paths();
  openat2_like_linux();
  return 0;
}

int check_held_up(void) {
  struct stat status;
  EXPECT(open(NORMAL_NODE, O_RDONLY) < 0 && errno == ENOENT);
  EXPECT(open(NORMAL_NODE, O_WRONLY) < 0 && errno == ENOENT);
  EXPECT(stat(NORMAL_NODE, &status) < 0 && errno == ENOENT);
  EXPECT(access(NORMAL_NODE, R_OK) < 0 && errno == ENOENT);
  EXPECT(answers(open(NORMAL_NODE, O_RDWR | O_CLOEXEC | O_NOCTTY)));
  EXPECT(answers(open(NORMAL_NODE, O_ACCMODE)));
  return 0;
}

static void expect_device(const struct stat* status, unsigned node) {
  struct stat opened;
  const int device = open(node == 0 ? NORMAL_NODE : UPGRADE_NODE, O_RDWR);
  EXPECT(fstat(device, &opened) == 0 && opened.st_ino == status->st_ino && close(device) == 0);
  EXPECT(status->st_nlink == 1 && status->st_dev == opened.st_dev);
  EXPECT(S_ISCHR(status->st_mode) && (status->st_mode & 0777) == 0666 && status->st_size == 0);
  EXPECT(major(status->st_rdev) == 240 && minor(status->st_rdev) == node);
}

static void expect_looks(const char* path, unsigned node) {
  struct stat status;
#ifdef SYS_stat
  EXPECT(syscall(SYS_stat, path, &status) == 0);
  expect_device(&status, node);
  EXPECT(syscall(SYS_lstat, path, &status) == 0);
  expect_device(&status, node);
  EXPECT(syscall(SYS_access, path, R_OK | W_OK, X_OK) == 0);
  EXPECT(syscall(SYS_stat, path, NULL) < 0 && errno == EFAULT);
#endif
  EXPECT(syscall(SYS_newfstatat, AT_FDCWD, path, &status, AT_SYMLINK_NOFOLLOW) == 0);
  expect_device(&status, node);
  EXPECT(syscall(SYS_newfstatat, AT_FDCWD, path, &status, 1 << 30) < 0 && errno == EINVAL);

  struct statx extended;
  EXPECT(syscall(SYS_statx, AT_FDCWD, path, 0, STATX_BASIC_STATS, &extended) == 0);
  EXPECT(S_ISCHR(extended.stx_mode) && (extended.stx_mode & 0777) == 0666);
  EXPECT(extended.stx_rdev_major == 240 && extended.stx_rdev_minor == node);
  EXPECT(extended.stx_nlink == 1 && (extended.stx_mask & STATX_NLINK) != 0);
  EXPECT(extended.stx_ino != 0);

  EXPECT(syscall(SYS_faccessat, AT_FDCWD, path, F_OK, X_OK) == 0);
  EXPECT(syscall(SYS_faccessat, AT_FDCWD, path, X_OK, 0) < 0 && errno == EACCES);
  EXPECT(syscall(SYS_faccessat, AT_FDCWD, path, 8) < 0 && errno == EINVAL);
  EXPECT(syscall(SYS_faccessat2, AT_FDCWD, path, R_OK, AT_EACCESS) == 0);
  EXPECT(syscall(SYS_faccessat2, AT_FDCWD, path, R_OK, 1 << 30) < 0 && errno == EINVAL);
}

static void relative_looks(void) {
  struct stat status;
  struct statx extended;
  const int root = open("/", O_RDONLY | O_DIRECTORY);
  EXPECT(chdir("/usr") == 0);
  EXPECT(stat(".." UPGRADE_NODE, &status) == 0);
  expect_device(&status, 1);
  EXPECT(fstatat(root, UPGRADE_NODE + 1, &status, 0) == 0);
  expect_device(&status, 1);
  EXPECT(syscall(SYS_statx, root, UPGRADE_NODE + 1, 0, STATX_BASIC_STATS, &extended) == 0);
  EXPECT(extended.stx_rdev_major == 240 && extended.stx_rdev_minor == 1);
  EXPECT(syscall(SYS_faccessat, root, NORMAL_NODE + 1, W_OK) == 0);
  EXPECT(syscall(SYS_faccessat2, root, NORMAL_NODE + 1, W_OK, 0) == 0);
  EXPECT(fstatat(AT_FDCWD, NORMAL_NODE + 1, &status, 0) < 0 && errno == ENOENT);
  close(root);
}

int check_every_open(void) {
  expect_looks(NORMAL_NODE, 0);
  expect_looks(UPGRADE_NODE, 1);
  expect_looks("/usr/../qorv/devices//char/zaxdriver/ryn_vdr", 0);
  relative_looks();
  const int reading = open(NORMAL_NODE, O_RDONLY | O_NONBLOCK);
  EXPECT(answers(reading) && (fcntl(reading, F_GETFL) & (O_ACCMODE | O_NONBLOCK)) == O_NONBLOCK);
  const int writing = open(UPGRADE_NODE, O_WRONLY);
  EXPECT(answers(writing) && (fcntl(writing, F_GETFL) & O_ACCMODE) == O_WRONLY);

  struct stat status;
  EXPECT(stat("/", &status) == 0 && S_ISDIR(status.st_mode));
  EXPECT(stat("/nonesuch", &status) < 0 && errno == ENOENT);
  EXPECT(access("/qorv/devices/char/zaxdriver/ryn_vd", F_OK) < 0 && errno == ENOENT);
  EXPECT(open(NORMAL_NODE, O_PATH) < 0 && errno == ENOENT);
  return 0;
}

// What Linux would answer for a plain file, and leave to the driver of a device.
int check_plain_file_requests(void) {
  static const unsigned long requests[] = {FIONREAD,        FIOQSIZE,          FS_IOC_GETFLAGS,
                                           FS_IOC_SETFLAGS, FS_IOC_FSGETXATTR, FS_IOC_FSSETXATTR,
                                           0x80111500UL};
  static unsigned char room[256];
  const int device = open(NORMAL_NODE, O_RDWR);
  for (size_t i = 0; i < sizeof requests / sizeof *requests; ++i) {
    EXPECT(ioctl(device, requests[i], room) < 0 && errno == ENOTTY);
  }
  return 0;
}

int check_permissions(void) {
  const int device = open(NORMAL_NODE, O_RDWR);
  EXPECT(answers(device) && fchmod(device, 0) == 0);
  EXPECT(answers(open(NORMAL_NODE, O_RDWR)));
  EXPECT(answers(device));
  return 0;
}

// The simulation can't know what the descriptor is.
int check_hidden(void) {
  const int device = open(NORMAL_NODE, O_RDWR);
  const int file = open("/dev/null", O_RDWR);
  EXPECT(answers(device) && prctl(PR_SET_DUMPABLE, 0) == 0);
  unsigned char block[968] = "edge-1";
  struct envelope argument = envelope(968, block, 0, NULL);
  EXPECT(command(device, 2, &argument) == EACCES);
  EXPECT(command(file, 9, NULL) == EACCES);
  EXPECT(!isatty(device) && errno == ENOTTY);
  EXPECT(open("/dev/null", O_RDWR) >= 0);
  return 0;
}

// The host's own nodes are the null and the zero device here, which files on the way are too.
int check_beside(void) {
  check_spellings();
  EXPECT(symlink(NORMAL_NODE, "/link") == 0);
  static const char* const real[] = {"/link", "/dev/null", "/dev/zero",
                                     "/proc/self/root" NORMAL_NODE};
  for (size_t i = 0; i < sizeof real / sizeof *real; ++i) {
    const int device = open(real[i], O_RDWR);
    EXPECT(device >= 0 && command(device, 9, NULL) == EACCES);
    EXPECT(command(device, 2, NULL) == EACCES);
    EXPECT(!isatty(device) && errno == ENOTTY);
  }
  EXPECT(command(open(NORMAL_NODE, O_RDONLY), 2, NULL) == EACCES);
  EXPECT(command(open("/dev/full", O_RDWR), 9, NULL) == ENOTTY);
  return 0;
}
