// guarded [--seconds SECONDS] COMMAND...: runs a system test so that nothing of it is left, and not for
// ever. Which node the user's environment asks for is nothing to a test.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "guard.h"

int main(int /*count*/, char** arguments) {
  int seconds = guard::kSeconds;
  char** command = arguments + 1;
  if (command[0] && command[1] && std::string_view(command[0]) == "--seconds") {
    seconds = std::atoi(command[1]);
    command += 2;
  }
  if (!command[0] || seconds <= 0) {
    (void)std::fprintf(stderr, "usage: guarded [--seconds SECONDS] COMMAND...\n");
    return 2;
  }
  guard::Contain(seconds);
  unsetenv("USE_UPGRADE_DEV");
  execvp(command[0], command);
  (void)std::fprintf(stderr, "guarded: %s: %s\n", command[0], std::strerror(errno));
  return 127;
}
