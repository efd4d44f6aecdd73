// Many clients of one datapath at once.
#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device.h"

enum { kRounds = 5, kRecord = 577 };

struct client {
  int device;
  char name[64];
  uint32_t number;
};

static void expect_record(const unsigned char* record, const char* name, uint32_t number) {
  EXPECT(strcmp((const char*)record, name) == 0 && memcmp(record + 64, &number, 4) == 0);
}

// What one thread sets, it alone sees change, whatever the others do.
static void* use_instance(void* argument) {
  const struct client* client = argument;
  unsigned char record[kRecord];
  for (uint32_t round = 0; round < kRounds; ++round) {
    const uint32_t number = client->number + round;
    EXPECT(set_instance(client->name, number) == 0);
    for (uint32_t code = 0; code <= 1; ++code) {
      unsigned char block[968] = {0};
      memcpy(block, client->name, sizeof client->name);
      block[368] = code == 0;
      uint32_t length = kRecord;
      memset(record, 0, sizeof record);
      struct envelope argument_of_get = envelope(968, block, length, record);
      EXPECT(command(client->device, code, &argument_of_get) == 0);
      length = out_length(&argument_of_get);
      EXPECT(length == kRecord);
      expect_record(record, client->name, number);
    }
    if (round + 1 < kRounds) EXPECT(delete_instance(client->name) == 0);
  }
  return NULL;
}

static void be_process(int process, int threads) {
  pthread_t* started = calloc((size_t)threads, sizeof *started);
  struct client* clients = calloc((size_t)threads, sizeof *clients);
  const int device = open(NORMAL_NODE, O_RDWR);
  for (int i = 0; i < threads; ++i) {
    clients[i] = (struct client){.device = device, .number = (uint32_t)(process * 1000 + i * 10)};
    (void)snprintf(clients[i].name, sizeof clients[i].name, "process-%d-thread-%d", process, i);
    EXPECT(pthread_create(&started[i], NULL, use_instance, &clients[i]) == 0);
  }
  for (int i = 0; i < threads; ++i) EXPECT(pthread_join(started[i], NULL) == 0);
}

static int share(int processes, int threads) {
  for (int i = 0; i < processes; ++i) {
    if (fork() != 0) continue;
    be_process(i, threads);
    _exit(0);
  }
  for (int i = 0; i < processes; ++i) {
    int status = 1;
    EXPECT(wait(&status) > 0 && status == 0);
  }
  static unsigned char records[1001 * kRecord];
  uint32_t length = sizeof records;
  EXPECT(command_on_name(open(NORMAL_NODE, O_RDWR), 0, "", records, &length) == 0);
  printf("%u instances\n", length / kRecord);
  return 0;
}

// What the supervisor of this run has open, and its resident memory in kB.
static int open_descriptors(pid_t supervisor) {
  char path[32];
  (void)snprintf(path, sizeof path, "/proc/%d/fd", supervisor);
  DIR* directory = opendir(path);
  EXPECT(directory != NULL);
  int count = 0;
  while (readdir(directory)) ++count;
  EXPECT(closedir(directory) == 0);
  return count;
}

static int resident_memory(pid_t supervisor) {
  char path[32];
  char line[128];
  int size = -1;
  (void)snprintf(path, sizeof path, "/proc/%d/status", supervisor);
  FILE* status = fopen(path, "r");
  EXPECT(status != NULL);
  while (fgets(line, sizeof line, status)) (void)sscanf(line, "VmRSS: %d", &size);
  EXPECT(fclose(status) == 0);
  return size;
}

static void make_commands_until_killed(void) {
  static unsigned char records[1001 * kRecord];
  for (;;) {
    uint32_t length = sizeof records;
    const int device = open(NORMAL_NODE, O_RDWR);
    (void)set_instance("edge-1", 1);
    (void)command_on_name(device, 0, "", records, &length);
    close(device);
  }
}

static void kill_clients(int count) {
  for (int i = 0; i < count; ++i) {
    const pid_t child = fork();
    if (child == 0) make_commands_until_killed();
    const struct timespec pause = {0, (i * 37L % 1500) * 1000};
    nanosleep(&pause, NULL);
    EXPECT(kill(child, SIGKILL) == 0 && waitpid(child, NULL, 0) == child);
  }
}

static int kill_many(int count, int allowed_growth) {
  const pid_t supervisor = getppid();
  for (int i = 0; i < 500; ++i) {
    char name[16];
    (void)snprintf(name, sizeof name, "edge-%d", i);
    EXPECT(set_instance(name, 1) == 0);
  }
  kill_clients(count / 4);
  const int descriptors = open_descriptors(supervisor);
  const int memory = resident_memory(supervisor);
  kill_clients(count);
  // One call may be on its way.
  EXPECT(open_descriptors(supervisor) <= descriptors + 1);
  EXPECT(resident_memory(supervisor) <= memory + allowed_growth);
  uint32_t level = 9;
  EXPECT(get_word(open(NORMAL_NODE, O_RDWR), 9, &level) == 0 && level == 0);
  return 0;
}

// crowd share PROCESSES THREADS | kill CLIENTS KILOBYTES
int main(int argc, char** argv) {
  if (argc == 4 && strcmp(argv[1], "share") == 0) return share(atoi(argv[2]), atoi(argv[3]));
  if (argc == 4 && strcmp(argv[1], "kill") == 0) return kill_many(atoi(argv[2]), atoi(argv[3]));
  return 2;
}
