// Lists the instances while another thread executes this program anew, many times. Linked statically
// at fixed addresses, the new program has its own bytes where the reply to the old one was to go.
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device.h"

enum { kInstances = 1001, kRecord = 577 };

static unsigned char reply[kInstances * kRecord];
static volatile int is_listing;

static void wait_microseconds(int count) {
  struct timespec pause = {0, count * 1000L};
  nanosleep(&pause, NULL);
}

// The new program: nobody has told it anything, so nothing may change here.
static int keep_watch(void) {
  for (int round = 0; round < 20; ++round) {
    wait_microseconds(100);
    for (size_t i = 0; i < sizeof reply; ++i) {
      if (reply[i] != 0) return 3;
    }
  }
  return 0;
}

static void* execute(void* microseconds) {
  while (!is_listing) {
  }
  wait_microseconds((int)(intptr_t)microseconds);
  char* const arguments[] = {(char*)"exec_race", (char*)"watch", NULL};
  execv("/proc/self/exe", arguments);
  _exit(4);
}

static void list_until_executed(int microseconds) {
  const int device = open(NORMAL_NODE, O_RDWR);
  pthread_t thread;
  EXPECT(device >= 0);
  EXPECT(pthread_create(&thread, NULL, execute, (void*)(intptr_t)microseconds) == 0);
  for (;;) {
    uint32_t length = sizeof reply;
    is_listing = 1;
    (void)command_on_name(device, 0, "", reply, &length);
  }
}

// exec_race ROUNDS
int main(int argc, char** argv) {
  if (argc == 2 && strcmp(argv[1], "watch") == 0) return keep_watch();
  for (int i = 0; i < kInstances; ++i) {
    char name[16];
    (void)snprintf(name, sizeof name, "edge-%d", i);
    EXPECT(set_instance(name, 1) == 0);
  }
  const int rounds = argc == 2 ? atoi(argv[1]) : 0;
  int damaged = 0;
  for (int round = 0; round < rounds; ++round) {
    const pid_t child = fork();
    if (child == 0) list_until_executed(round * 7 % 600);
    int status = 0;
    EXPECT(waitpid(child, &status, 0) == child);
    damaged += status != 0;
  }
  printf("%d of %d damaged\n", damaged, rounds);
  return rounds == 0 || damaged != 0;
}
