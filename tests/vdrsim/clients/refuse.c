#include <errno.h>
#include <seccomp.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

// refuse CALL ERRNO [ARGUMENT MASK VALUE] -- COMMAND...
//
// Runs COMMAND as a container would that refuses CALL, or refuses it only where the masked argument
// has the value. Who makes it all the same is killed where ERRNO is 0.
int main(int argc, char** argv) {
  int end = 3;
  while (end < argc && strcmp(argv[end], "--") != 0) ++end;
  if (end + 1 >= argc || (end != 3 && end != 6)) return 2;

  const int call = seccomp_syscall_resolve_name(argv[1]);
  const int error = atoi(argv[2]);
  const uint32_t refusal = error ? SCMP_ACT_ERRNO((uint32_t)error) : SCMP_ACT_KILL_PROCESS;
  scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
  if (call == __NR_SCMP_ERROR || !filter) return 2;
  int result;
  if (end == 3) {
    result = seccomp_rule_add(filter, refusal, call, 0);
  } else {
    const struct scmp_arg_cmp condition = {(unsigned)atoi(argv[3]), SCMP_CMP_MASKED_EQ,
                                           strtoul(argv[4], NULL, 0), strtoul(argv[5], NULL, 0)};
    result = seccomp_rule_add_array(filter, refusal, call, 1, &condition);
  }
  if (result != 0 || seccomp_load(filter) != 0) {
    (void)fprintf(stderr, "refuse: cannot install the filter\n");
    return 2;
  }
  seccomp_release(filter);
  execvp(argv[end + 1], argv + end + 1);
  return 127;
}
