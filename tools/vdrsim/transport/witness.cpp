#include "witness.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <utility>

namespace vdrsim {

namespace {

// Holds nothing that others wait to see closed. It is there as long as the other end of the pipe.
[[noreturn]] void Stand(int orders) {
  dup2(orders, 0);
  close_range(1, ~0U, 0);
  (void)!chdir("/");
  prctl(PR_SET_NAME, "vdrsim-witness");
  sigset_t all;
  sigfillset(&all);
  char order = 0;
  while (read(0, &order, 1) == 1) {
    constexpr timespec kAtOnce{};
    while (sigtimedwait(&all, nullptr, &kAtOnce) > 0) {
    }
  }
  _exit(EXIT_SUCCESS);
}

}  // namespace

Witness::Witness() {
  int orders[2];
  int ready[2];
  if (pipe2(orders, O_CLOEXEC) != 0) return;
  const UniqueFd taken(orders[0]);
  UniqueFd given(orders[1]);
  if (pipe2(ready, O_CLOEXEC) != 0) return;
  const UniqueFd seen(ready[0]);
  UniqueFd held(ready[1]);
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  sigprocmask(SIG_SETMASK, &all, &before);
  const pid_t process = fork();
  if (process == 0) Stand(taken.get());
  sigprocmask(SIG_SETMASK, &before, nullptr);
  // Until it has closed what it was born with. Without a process there is nothing to wait for, and no
  // status.
  held.Close();
  char none = 0;
  (void)!read(seen.get(), &none, 1);
  status_ = StatusFile::Of(process);
  forget_ = std::move(given);
}

bool Witness::Got(int signal) const {
  const uint64_t pending = status_.Number("ShdPnd:", 16).value_or(0);
  if ((pending >> (signal - 1) & 1) == 0) return false;
  (void)!write(forget_.get(), "", 1);
  return true;
}

}  // namespace vdrsim
