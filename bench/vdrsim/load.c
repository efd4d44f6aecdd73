// What is measured in a run and outside. It reads how often from standard input, does it so often, and
// writes how many nanoseconds that took, until the input ends.
//
// load command CODE CAPACITY | load clients COUNT CODE CAPACITY | load line LINE...
//
// load row COUNT makes so many commands, no two of them the same, and ends.
#include <fcntl.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static int64_t now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000LL + time.tv_nsec;
}

static _Noreturn void fail(const char* what) {
  perror(what);
  exit(1);
}

struct device {
  int descriptor;
  uint32_t code;
  uint32_t capacity;
  unsigned char* reply;
};

static struct device open_device(const char* code, const char* capacity) {
  struct device device = {.code = (uint32_t)atoi(code), .capacity = (uint32_t)atoi(capacity)};
  device.descriptor = open("/qorv/devices/char/zaxdriver/ryn_vdr", O_RDWR);
  if (device.descriptor < 0) fail("open");
  device.reply = malloc(device.capacity + 1);
  // The caller's pages are there, so that what is measured is not where they come from.
  memset(device.reply, 1, device.capacity + 1);
  return device;
}

static void make_commands(const struct device* device, int count) {
  static unsigned char block[968];
  const uint32_t in_length = device->code == 9 ? 0 : sizeof block;
  const uint64_t in = (uintptr_t)block;
  const uint64_t out = (uintptr_t)device->reply;
  for (int i = 0; i < count; ++i) {
    unsigned char envelope[24];
    memcpy(envelope, &in_length, 4);
    memcpy(envelope + 4, &in, 8);
    memcpy(envelope + 12, &device->capacity, 4);
    memcpy(envelope + 16, &out, 8);
    if (ioctl(device->descriptor, device->code, envelope) != 0) fail("ioctl");
    if (memcmp(envelope + 12, &device->capacity, 4) != 0) {
      (void)fprintf(stderr, "load: the reply is shorter\n");
      exit(1);
    }
  }
}

static void put(unsigned char* block, size_t offset, const char* form, int number) {
  (void)snprintf((char*)block + offset, 64, form, number);
}

static void set(const struct device* device, uint32_t code, const unsigned char* block) {
  unsigned char envelope[24] = {0};
  const uint32_t in_length = 968;
  const uint64_t in = (uintptr_t)block;
  memcpy(envelope, &in_length, 4);
  memcpy(envelope + 4, &in, 8);
  if (ioctl(device->descriptor, code, envelope) != 0) fail("ioctl");
}

// As many instances as there can be, so that their list is as long as it gets.
static void fill_instances(const struct device* device) {
  unsigned char block[968] = {0};
  for (int i = 0; i < 1001; ++i) {
    put(block, 0, "edge-%d", i);
    set(device, 2, block);
  }
}

// As many endpoints and nodes as there can be; each of them watches each.
static void fill_sessions(const struct device* device) {
  unsigned char block[968] = {0};
  put(block, 0, "edge-%d", 0);
  put(block, 384, "lif", 0);
  set(device, 2, block);
  block[256] = 1;
  set(device, 53, block);
  block[256] = 0;
  set(device, 57, block);
  for (int i = 0; i < 28672; ++i) {
    put(block, 320, "endpoint-%d", i);
    set(device, 45, block);
  }
  memset(block, 0, sizeof block);
  put(block, 0, "owner", 0);
  set(device, 90, block);
  for (int i = 0; i < 100; ++i) {
    put(block, 256, "node-%d", i);
    set(device, 93, block);
  }
}

static void by_clients(const struct device* device, int clients, int count) {
  for (int i = 0; i < clients; ++i) {
    if (fork() != 0) continue;
    make_commands(device, count / clients);
    _exit(0);
  }
  for (int i = 0; i < clients; ++i) wait(NULL);
}

static void by_shell(char* line, int count) {
  for (int i = 0; i < count; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      execl("/bin/sh", "sh", "-c", line, (char*)NULL);
      _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0) fail(line);
  }
}

// Of four commands one has an input of 968 bytes, and fails; the others have one of 4.
static void make_row(int device, int count) {
  unsigned char block[968] = {0};
  for (int32_t i = 0; i < count; ++i) {
    unsigned char envelope[24] = {0};
    const int is_block = i % 4 == 0;
    const uint32_t in_length = is_block ? sizeof block : sizeof i;
    const uint64_t in = is_block ? (uintptr_t)block : (uintptr_t)&i;
    (void)snprintf((char*)block, 64, "edge-%d", i);
    memcpy(envelope, &in_length, 4);
    memcpy(envelope + 4, &in, 8);
    if (ioctl(device, is_block ? 3 : 10, envelope) != 0 && !is_block) fail("ioctl");
  }
}

int main(int argc, char** argv) {
  if (argc == 3 && strcmp(argv[1], "row") == 0) {
    make_row(open_device("10", "0").descriptor, atoi(argv[2]));
    return 0;
  }
  const int is_line = argc == 3 && strcmp(argv[1], "line") == 0;
  const int is_clients = argc == 5 && strcmp(argv[1], "clients") == 0;
  if (!is_line && !is_clients && (argc != 4 || strcmp(argv[1], "command") != 0)) return 2;
  struct device device = {0};
  if (!is_line) {
    device = open_device(argv[argc - 2], argv[argc - 1]);
    if (device.code == 0) fill_instances(&device);
    if (device.code == 96) fill_sessions(&device);
    make_commands(&device, 1);
  }
  (void)printf("0\n");
  (void)fflush(stdout);
  int count = 0;
  while (scanf("%d", &count) == 1) {
    const int64_t start = now();
    if (is_line) {
      by_shell(argv[2], count);
    } else if (is_clients) {
      by_clients(&device, atoi(argv[2]), count);
    } else {
      make_commands(&device, count);
    }
    (void)printf("%lld\n", (long long)(now() - start));
    (void)fflush(stdout);
  }
  return 0;
}
