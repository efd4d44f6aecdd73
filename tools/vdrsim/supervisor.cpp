#include "supervisor.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/wait.h>

#include <cerrno>
#include <fstream>

namespace vdrsim {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{2};

// How often a run that was told to stop looks for processes that are still there.
constexpr int kLookIntervalMs = 50;

}  // namespace

int Supervisor::Run() {
  pollfd sources[] = {{launched_.listener.get(), POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}};
  pollfd& listener = sources[0];
  // The listener hangs up when no process is left whose calls could arrive on it. That, and not the
  // want of children, ends the run: a shell may have left children of its own to this process.
  while (!commandEnded_ || listener.fd >= 0) {
    if (poll(sources, 2, stopRequested_ ? kLookIntervalMs : -1) < 0) continue;
    if ((listener.revents & POLLIN) != 0) {
      calls_.AnswerNext();
    } else if (listener.revents != 0) {
      listener.fd = -1;
    }
    if (sources[1].revents != 0) TakeSignals();
    if (stopRequested_ && commandEnded_) EndStragglers();
  }
  AwaitExits();
  return commandStatus_;
}

void Supervisor::TakeSignals() {
  while (const auto signal = signals_.Next()) {
    const auto number = static_cast<int>(signal->ssi_signo);
    if (number == SIGCHLD) {
      Reap();
      continue;
    }
    stopRequested_ = true;
    // What the terminal sends, the command gets itself; what a process sends came to this one only.
    const bool sentByProcess = signal->ssi_code <= 0;
    if (sentByProcess && !commandEnded_) kill(launched_.command, number);
  }
}

void Supervisor::Reap() {
  int status = 0;
  for (pid_t child = waitpid(-1, &status, WNOHANG); child > 0;
       child = waitpid(-1, &status, WNOHANG)) {
    askedToEnd_.erase(child);
    strangers_.erase(child);
    if (child != launched_.command) continue;
    commandEnded_ = true;
    commandStatus_ = status;
  }
}

// A process whose parent ended becomes a child of this one, so the generations come up in turn.
void Supervisor::EndStragglers() {
  if (!patienceEnds_) patienceEnds_ = Clock::now() + kPatience;
  const bool patient = Clock::now() < *patienceEnds_;
  for (const pid_t child : Children()) {
    if (strangers_.contains(child)) continue;
    if (!patient) {
      kill(child, SIGKILL);
    } else if (askedToEnd_.insert(child).second) {
      kill(child, SIGTERM);
    }
  }
}

// The listener hangs up while the last processes are still on their way out.
void Supervisor::AwaitExits() {
  for (bool waited = true; waited;) {
    waited = false;
    for (const pid_t child : Children()) {
      if (!strangers_.contains(child)) waited |= waitpid(child, nullptr, 0) == child;
    }
  }
}

std::set<pid_t> Children() {
  std::ifstream list(fmt::format("/proc/self/task/{}/children", getpid()));
  std::set<pid_t> children;
  for (pid_t child = 0; list >> child;) children.insert(child);
  return children;
}

}  // namespace vdrsim
