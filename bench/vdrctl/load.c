// Starts a program as often as it is told. It reads how often from standard input, and writes how many
// nanoseconds that took, until the input ends; or it starts it once, and writes how many kilobytes of
// memory it had at most.
//
// load times PROGRAM ARGUMENTS... | load memory PROGRAM ARGUMENTS...
#include <fcntl.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static long long now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000LL + time.tv_nsec;
}

static posix_spawn_file_actions_t to_nowhere;

static long run(char** words) {
  pid_t child = 0;
  int status = 0;
  struct rusage usage;
  const int error = posix_spawnp(&child, words[0], &to_nowhere, NULL, words, environ);
  if (error != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
    (void)fprintf(stderr, "load: %s failed\n", words[0]);
    exit(1);
  }
  return usage.ru_maxrss;
}

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  char** words = argv + 2;
  posix_spawn_file_actions_init(&to_nowhere);
  for (int stream = STDOUT_FILENO; stream <= STDERR_FILENO; ++stream) {
    posix_spawn_file_actions_addopen(&to_nowhere, stream, "/dev/null", O_WRONLY, 0);
  }
  if (strcmp(argv[1], "memory") == 0) return printf("%ld\n", run(words)) < 0;
  run(words);
  (void)printf("0\n");
  (void)fflush(stdout);
  int count = 0;
  while (scanf("%d", &count) == 1) {
    const long long start = now();
    for (int i = 0; i < count; ++i) run(words);
    (void)printf("%lld\n", now() - start);
    (void)fflush(stdout);
  }
  return 0;
}
