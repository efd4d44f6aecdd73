// sets COUNT [NANOSECONDS]: as many LIFs as a file of commands sets that the measurement makes, by the
// library alone, with as much work before each.
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <vdrzax/lif.h>

static long long now(void) {
  struct timespec time;
  (void)clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000LL + time.tv_nsec;
}

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const int count = atoi(argv[1]);
  const int work = argc > 2 ? atoi(argv[2]) : 0;
  for (int i = 0; i < count; ++i) {
    if (work > 0) {
      const long long end = now() + work;
      while (now() < end) {
      }
    }
    char name[64];
    char aux[64];
    (void)snprintf(name, sizeof name, "lif-%d", i);
    (void)snprintf(aux, sizeof aux, "aux-%d", i);
    const MacValue mac = {{2, 0, 0, 0, (uint8_t)(i >> 8), (uint8_t)i}};
    if (VDRZAX_SetLif(name, aux, (uint32_t)i, 4, (uint32_t)i % 4096, 6, 7, 8, "edge-1", &mac) !=
        0) {
      perror("sets");
      return 1;
    }
  }
  return 0;
}
