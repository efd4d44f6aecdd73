#include "guard.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

namespace guard {

namespace {

constexpr int kTimedOut = 124;

int ExitStatus(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int WaitFor(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return EXIT_FAILURE;
  }
  return ExitStatus(status);
}

sigset_t AllSignals() {
  sigset_t all;
  sigfillset(&all);
  return all;
}

// Reaps who ended; true when the command is among them.
bool HasEnded(pid_t command, int& exitStatus) {
  int status = 0;
  for (pid_t ended = 0; (ended = waitpid(-1, &status, WNOHANG)) > 0;) {
    if (ended != command) continue;
    exitStatus = ExitStatus(status);
    return true;
  }
  return false;
}

// Waits for the end of the command, for a signal that says to stop, or for the end of the time.
int Await(pid_t command, int seconds) {
  const sigset_t all = AllSignals();
  const time_t end = time(nullptr) + seconds;
  for (int exitStatus = 0;;) {
    if (HasEnded(command, exitStatus)) return exitStatus;
    const time_t left = end - time(nullptr);
    if (left <= 0) break;
    const timespec patience{left, 0};
    const int number = sigtimedwait(&all, nullptr, &patience);
    if (number == SIGTERM || number == SIGINT || number == SIGHUP) return 128 + number;
  }
  (void)std::fprintf(stderr, "guard: it has not ended after %d s and is killed\n", seconds);
  return kTimedOut;
}

}  // namespace

void AdoptOrphans() { prctl(PR_SET_CHILD_SUBREAPER, 1L); }

void EndDescendants() {
  for (;;) {
    std::ifstream children("/proc/thread-self/children");
    pid_t child = 0;
    if (!(children >> child)) return;
    do kill(child, SIGKILL);
    while (children >> child);
    // Only now the children of this one are the caller's own.
    waitpid(-1, nullptr, 0);
  }
}

// Between the caller and the child stands a keeper, which lives on when the caller is killed.
void Contain(int seconds) {
  const pid_t caller = getpid();
  const pid_t keeper = fork();
  if (keeper > 0) _exit(WaitFor(keeper));
  const sigset_t all = AllSignals();
  sigset_t before;
  sigprocmask(SIG_BLOCK, &all, &before);
  AdoptOrphans();
  prctl(PR_SET_PDEATHSIG, static_cast<long>(SIGTERM));
  if (keeper < 0 || getppid() != caller) _exit(EXIT_FAILURE);

  const pid_t command = fork();
  if (command == 0) {
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE}) (void)signal(number, SIG_DFL);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return;
  }
  const int exitStatus = command < 0 ? EXIT_FAILURE : Await(command, seconds);
  EndDescendants();
  _exit(exitStatus);
}

}  // namespace guard
