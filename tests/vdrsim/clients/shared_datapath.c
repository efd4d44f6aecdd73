// Processes and threads that use the library at once on one datapath. Each thread has an instance
// of its own; each process has a setting of its own, which all others watch. Ends with 0 when
// everybody found what was set.
#include <errno.h>
#include <pthread.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vdrzax.h>

enum { kProcesses = 4, kThreads = 4, kRounds = 40 };

#define EXPECT(condition)                                                             \
  do {                                                                                \
    if (!(condition)) {                                                               \
      (void)fprintf(stderr, "line %d: %s (errno %d)\n", __LINE__, #condition, errno); \
      _exit(1);                                                                       \
    }                                                                                 \
  } while (0)

static const struct {
  int (*get)(uint32_t* value);
  int (*set)(uint32_t value);
} kSettings[kProcesses] = {{VDRZAX_GetLogLevel, VDRZAX_SetLogLevel},
                           {VDRZAX_GetExtendedLogLevel, VDRZAX_SetExtendedLogLevel},
                           {VDRZAX_GetStatsLevel, VDRZAX_SetStatsLevel},
                           {VDRZAX_GetTxDispQueueSize, VDRZAX_SetTxDispQueueSize}};

struct client {
  int process;
  int thread;
  char name[64];
  uint32_t seen[kProcesses];
};

static void expect_fields(const InstanceRecord* record, const struct client* client,
                          uint32_t round) {
  EXPECT(strcmp(record->name, client->name) == 0);
  EXPECT(record->word64 == round);
  EXPECT(record->word68 == 1000 + round);
  EXPECT(record->byte72 == client->thread);
  EXPECT(strcmp(record->text73, "shared") == 0);
}

static void expect_listed(const struct client* client, uint8_t filter, uint32_t round) {
  RecordList* list = NULL;
  EXPECT(VDRZAX_GetInstances(client->name, filter, &list) == 0);
  EXPECT(filter ? list->count == 1 : list->count <= kProcesses * kThreads);
  const InstanceRecord* records = list->entries;
  int found = 0;
  for (int32_t i = 0; i < list->count; ++i) {
    if (strcmp(records[i].name, client->name) != 0) continue;
    expect_fields(&records[i], client, round);
    ++found;
  }
  EXPECT(found == 1);
  VDRZAX_ReleaseInstances(list);
}

static void use_instance(const struct client* client, uint32_t round) {
  EXPECT(VDRZAX_SetVdrInstance(client->name, round, "shared", 1000 + round,
                               (uint8_t)client->thread) == 0);
  EXPECT(VDRZAX_SetVdrInstanceTunables(client->name, client->name, 2000 + round) == 0);

  InstanceRecord* record = NULL;
  EXPECT(VDRZAX_GetInstance(client->name, &record) == 0);
  expect_fields(record, client, round);
  EXPECT(strcmp(record->text329, client->name) == 0);
  EXPECT(record->word399 == 2000 + round);
  VDRZAX_ReleaseInstance(record);

  expect_listed(client, 1, round);
  expect_listed(client, 0, round);

  EXPECT(VDRZAX_DelVdrInstance(client->name) == 0);
  EXPECT(VDRZAX_DelVdrInstance(client->name) == -1 && errno == ENOENT);
  EXPECT(VDRZAX_GetInstance(client->name, &record) == -1 && errno == ENOENT);
}

// The first thread of each process counts its setting up, so nobody ever sees it fall.
static void use_settings(struct client* client, uint32_t round) {
  for (int i = 0; i < kProcesses; ++i) {
    const int is_own = client->process == i && client->thread == 0;
    if (is_own) EXPECT(kSettings[i].set(round) == 0);
    uint32_t value = UINT32_MAX;
    EXPECT(kSettings[i].get(&value) == 0);
    EXPECT(is_own ? value == round : value >= client->seen[i] && value <= kRounds);
    client->seen[i] = value;
  }
}

static void* run_thread(void* argument) {
  struct client* client = argument;
  for (uint32_t round = 1; round <= kRounds; ++round) {
    use_instance(client, round);
    use_settings(client, round);
  }
  return NULL;
}

static void run_process(int process) {
  static struct client clients[kThreads];
  pthread_t threads[kThreads];
  for (int i = 0; i < kThreads; ++i) {
    clients[i] = (struct client){.process = process, .thread = i};
    (void)snprintf(clients[i].name, sizeof clients[i].name, "process-%d-thread-%d", process, i);
    EXPECT(pthread_create(&threads[i], NULL, run_thread, &clients[i]) == 0);
  }
  for (int i = 0; i < kThreads; ++i) EXPECT(pthread_join(threads[i], NULL) == 0);
}

int main(void) {
  for (int i = 0; i < kProcesses; ++i) {
    const pid_t child = fork();
    EXPECT(child >= 0);
    if (child == 0) {
      run_process(i);
      _exit(0);
    }
  }
  int failed = 0;
  for (int i = 0; i < kProcesses; ++i) {
    int status = 1;
    EXPECT(wait(&status) > 0);
    if (status != 0) failed = 1;
  }
  if (failed) return 1;

  RecordList* list = NULL;
  EXPECT(VDRZAX_GetInstances("", 0, &list) == 0);
  EXPECT(list->count == 0);
  VDRZAX_ReleaseInstances(list);
  for (int i = 0; i < kProcesses; ++i) {
    uint32_t value = 0;
    EXPECT(kSettings[i].get(&value) == 0 && value == kRounds);
  }
  return 0;
}
