#include "supervisor.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>

namespace vdrsim {

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 2s;

// How often a run that was told to stop, or could not be looked at, is looked at.
constexpr int kLookIntervalMs = 50;

// The last processes may be on their way out when the command ends; that is nothing to talk about.
constexpr auto kSilence = 300ms;

constexpr int kStopSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

bool AsksToStop(int signal) {
  return std::ranges::find(kStopSignals, signal) != std::end(kStopSignals);
}

// A process that ended for a signal that it handled tells so as a shell does.
bool EndedBy(int status, int signal) {
  return WIFSIGNALED(status) ? WTERMSIG(status) == signal : WEXITSTATUS(status) == 128 + signal;
}

}  // namespace

int Supervisor::Run() {
  while (!IsOver()) Wait();
  return commandStatus_;
}

// The listener hangs up when no process is left whose calls could arrive on it.
void Supervisor::Wait() {
  pollfd sources[] = {{callsMayCome_ ? launched_.listener.get() : -1, 0, 0},
                      {signals_.descriptor(), POLLIN, 0},
                      {workers_.descriptor(), POLLIN, 0}};
  poll(sources, std::size(sources), Patience());  // where it fails, nothing is there
  const auto& [calls, signals, workers] = sources;
  if (calls.revents != 0) callsMayCome_ = false;
  if (signals.revents != 0) TakeSignals();
  if (workersWantLook_ || workers.revents != 0) workersWantLook_ = workers_.LookAfter();
}

int Supervisor::Patience() const {
  if (workersWantLook_ && callsMayCome_) return Workers::kLookIntervalMs;
  return commandEnded_ && (stopRequested_ || !isAnnounced_ || !callsMayCome_) ? kLookIntervalMs
                                                                              : -1;
}

void Supervisor::TakeSignals() {
  while (const auto signal = signals_.Next()) {
    if (signal->ssi_signo == SIGCHLD) {
      Reap();
    } else {
      TakeSignal(*signal);
    }
  }
}

void Supervisor::TakeSignal(const signalfd_siginfo& signal) {
  const auto number = static_cast<int>(signal.ssi_signo);
  const bool reached = ReachedCommand(number);
  const bool isOwn =
      signal.ssi_code == SI_USER && signal.ssi_pid == static_cast<uint32_t>(getpid());
  if (isOwn) return;
  if (AsksToStop(number)) {
    stopSignals_.insert(number);
    stopRequested_ |= commandEnded_.has_value();
  }
  if (reached || commandEnded_) return;
  if (signal.ssi_code == SI_QUEUE) {
    sigqueue(launched_.command, number, {.sival_ptr = std::bit_cast<void*>(signal.ssi_ptr)});
  } else {
    kill(launched_.command, number);
  }
}

// Tells whether a signal that came to this process came to the command as well, as keys of the
// terminal do and whatever else is sent to a process group.
bool Supervisor::ReachedCommand(int signal) const {
  return witness_.Got(signal) && getpgid(launched_.command) == getpgrp();
}

void Supervisor::Reap() {
  int status = 0;
  pid_t child = 0;
  while ((child = waitpid(-1, &status, WNOHANG | WUNTRACED)) > 0) {
    if (child == launched_.command && WIFSTOPPED(status)) signals_.Stop();
    if (WIFSTOPPED(status)) continue;
    askedToEnd_.erase(child);
    if (child == launched_.command) NoteEnd(status);
  }
}

// An interrupt that the command took and went on is a matter of the command's; to be told to
// terminate concerns the run.
void Supervisor::NoteEnd(int status) {
  commandEnded_ = Clock::now();
  commandStatus_ = status;
  stopRequested_ = std::ranges::any_of(stopSignals_, [status](int signal) {
    return signal == SIGTERM || signal == SIGHUP || EndedBy(status, signal);
  });
}

// The listener hangs up while the last processes are still on their way out, and a process whose
// parent ended becomes a child of this one, so the generations come up in turn.
bool Supervisor::IsOver() {
  if (!commandEnded_) return false;
  try {
    if (!stopRequested_ && callsMayCome_) return Announce(), false;
    const Members::Found left = members_.Find();
    if (stopRequested_) EndStragglers(left.processes);
    return !callsMayCome_ && left.isComplete && left.processes.empty();
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void Supervisor::EndStragglers(const std::vector<pid_t>& stragglers) {
  if (!patienceEnds_) patienceEnds_ = Clock::now() + kPatience;
  const bool patient = Clock::now() < *patienceEnds_;
  for (const pid_t straggler : stragglers) {
    if (!patient) {
      kill(straggler, SIGKILL);
    } else if (askedToEnd_.insert(straggler).second) {
      kill(straggler, SIGTERM);
    }
  }
}

void Supervisor::Announce() {
  if (isAnnounced_ || Clock::now() < *commandEnded_ + kSilence) return;
  isAnnounced_ = true;
  constexpr std::string_view kLine =
      "vdrsim: the command has ended; waiting for processes that it left (Ctrl-C ends them)\n";
  if (isatty(STDERR_FILENO) == 1) (void)!write(STDERR_FILENO, kLine.data(), kLine.size());
}

}  // namespace vdrsim
