/*
 * Measures what list getters cost in memory and time, with the allocator as it is and with a fixed
 * mmap threshold. Prints the tables of docs/memory.md.
 *
 * usage: measure_memory [RECORDS]    records in each reply, 100 when not given
 *
 * The program is its own device: the library finds open64, ioctl and close here.
 */
#define _GNU_SOURCE
#include <malloc.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <vdrzax.h>

enum { kRounds = 21, kWarmUp = 1, kGetters = 7, kSettings = 2 };

static uint32_t records_in_reply = 100;
static uint32_t record_size;

int open64(const char* node, int flags, ...) {
  (void)node;
  (void)flags;
  return 1000;
}

int ioctl(int descriptor, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  IoctlEnvelope* envelope = va_arg(arguments, IoctlEnvelope*);
  va_end(arguments);
  (void)descriptor;
  uint32_t length = records_in_reply * record_size;
  if (length > envelope->outLength) length = envelope->outLength;
  memset(envelope->outBuffer, 0, length);
  envelope->outLength = length;
  return 0;
}

int close(int descriptor) {
  (void)descriptor;
  return 0;
}

static int GetInstances(RecordList** out) { return VDRZAX_GetInstances(NULL, 0, out); }
static int GetLifs(RecordList** out) { return VDRZAX_GetLifs("edge", out); }
static int GetRoutes(RecordList** out) { return VDRZAX_GetRoutes("edge", out); }
static int GetNetworks(RecordList** out) { return VDRZAX_GetBridgeNetworks("a", "b", out); }
static int GetEndpoints(RecordList** out) { return VDRZAX_GetBridgeEndpoints(NULL, out); }
static int GetSessions(RecordList** out) { return VDRZAX_GetBridgeBFDSessions(NULL, out); }

static const struct Getter {
  const char* name;
  uint32_t record_size;
  int (*get)(RecordList** out);
  void (*release)(RecordList* list);
} getters[kGetters] = {
    {"VDRZAX_GetInstances", 577, GetInstances, VDRZAX_ReleaseInstances},
    {"VDRZAX_GetDemuxRoutes", 148, VDRZAX_GetDemuxRoutes, VDRZAX_ReleaseDemuxRoutes},
    {"VDRZAX_GetBridgeNetworks", 133, GetNetworks, VDRZAX_ReleaseBridgeNetworks},
    {"VDRZAX_GetBridgeEndpoints", 235, GetEndpoints, VDRZAX_ReleaseBridgeEndpoints},
    {"VDRZAX_GetLifs", 961, GetLifs, VDRZAX_ReleaseLifs},
    {"VDRZAX_GetRoutes", 668, GetRoutes, VDRZAX_ReleaseRoutes},
    {"VDRZAX_GetBridgeBFDSessions", 39, GetSessions, VDRZAX_ReleaseBridgeBFDSessions},
};

/* What one setting of the allocator gives; shared with the parent. */
struct Outcome {
  double nanoseconds[kGetters]; /* median of get and release */
  long held_kib[kGetters];      /* resident set over the start, with the list in hand */
  long idle_kib;                /* the same at the end, with everything released */
};

static long ResidentKib(void) {
  static char text[64];
  FILE* statm = fopen("/proc/self/statm", "r");
  long pages = 0;
  if (!statm || !fgets(text, sizeof text, statm) || sscanf(text, "%*d %ld", &pages) != 1) abort();
  fclose(statm);
  return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

static double Now(void) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return (double)now.tv_sec * 1e9 + (double)now.tv_nsec;
}

static int Compare(const void* left, const void* right) {
  const double difference = *(const double*)left - *(const double*)right;
  return (difference > 0) - (difference < 0);
}

/* An agent that polls: one getter after the other, each list released before the next. */
static void Poll(struct Outcome* outcome) {
  static double nanoseconds[kGetters][kRounds];
  const long start = ResidentKib();
  for (int round = 0; round < kRounds; ++round) {
    for (int index = 0; index < kGetters; ++index) {
      RecordList* list;
      record_size = getters[index].record_size;
      const double before = Now();
      if (getters[index].get(&list) != 0) abort();
      const double between = Now();
      outcome->held_kib[index] = ResidentKib() - start;
      const double resumed = Now();
      getters[index].release(list);
      nanoseconds[index][round] = between - before + (Now() - resumed);
    }
  }
  outcome->idle_kib = ResidentKib() - start;
  for (int index = 0; index < kGetters; ++index) {
    qsort(nanoseconds[index] + kWarmUp, kRounds - kWarmUp, sizeof(double), Compare);
    outcome->nanoseconds[index] = nanoseconds[index][kWarmUp + (kRounds - kWarmUp) / 2];
  }
}

int main(int count, char** arguments) {
  if (count > 1) records_in_reply = (uint32_t)strtoul(arguments[1], NULL, 10);
  struct Outcome* outcomes = mmap(NULL, kSettings * sizeof *outcomes, PROT_READ | PROT_WRITE,
                                  MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (outcomes == MAP_FAILED) return 1;
  for (int setting = 0; setting < kSettings; ++setting) {
    const pid_t child = fork();
    if (child == 0) {
      if (setting == 1 && mallopt(M_MMAP_THRESHOLD, 131072) != 1) _exit(1);
      Poll(&outcomes[setting]);
      _exit(0);
    }
    int status;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) return 1;
  }
  printf("%u records in each reply\n", records_in_reply);
  printf("| Getter | Resident, default | Resident, fixed | Time, default : fixed |\n");
  printf("|---|---|---|---|\n");
  for (int index = 0; index < kGetters; ++index) {
    printf("| `%s` | %ld KiB | %ld KiB | %.1f |\n", getters[index].name,
           outcomes[0].held_kib[index], outcomes[1].held_kib[index],
           outcomes[0].nanoseconds[index] / outcomes[1].nanoseconds[index]);
  }
  printf("| nothing held, at the end | %ld KiB | %ld KiB | |\n", outcomes[0].idle_kib,
         outcomes[1].idle_kib);
  return 0;
}
