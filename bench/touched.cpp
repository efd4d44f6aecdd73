// Counts the pages that a list getter touches for the first time, and prints them as a table.

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>

#include "lists.h"

namespace {

long Faults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

// The second of two calls: the first touches what is touched once in a program's life.
long TouchedKib(const std::function<void()>& work) {
  work();
  const long before = Faults();
  work();
  return (Faults() - before) * (sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace

int main() {
  // Each large buffer comes fresh from the kernel, and in single pages.
  if (mallopt(M_MMAP_THRESHOLD, 131072) != 1) return 1;
  if (prctl(PR_SET_THP_DISABLE, 1, 0, 0, 0) != 0) return 1;
  std::puts("| Function | Records | Touched | By the floor |\n|---|---|---|---|");
  for (const char* name : {"VDRZAX_GetRoutes", "VDRZAX_GetLifs", "VDRZAX_GetBridgeBFDSessions"}) {
    for (const uint32_t records : {1U, 10U, 100U, 1000U, 10000U}) {
      const Case subject = ListCase(name, records);
      subject.prepare();
      std::printf("| `%s` | %u | %ld KiB | %ld KiB |\n", name, records, TouchedKib(subject.library),
                  TouchedKib(subject.floor));
    }
  }
  return 0;
}
