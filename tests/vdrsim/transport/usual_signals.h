#pragma once

#include <signal.h>

#include <cstddef>
#include <ctime>
#include <vector>

// As long as it lives, no signal is ignored or blocked that the test does not ignore or block,
// whatever the tests were started with. At its end those are taken that still wait.
class UsualSignals {
 public:
  UsualSignals() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, &mask_);
    constexpr struct sigaction kByDefault {};
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
      sigaction(signal, &kByDefault, &actions_.emplace_back());
    }
  }
  UsualSignals(const UsualSignals&) = delete;
  ~UsualSignals() {
    sigset_t all;
    sigfillset(&all);
    constexpr timespec kAtOnce{};
    while (sigtimedwait(&all, nullptr, &kAtOnce) > 0) {
    }
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
      sigaction(signal, &actions_[static_cast<size_t>(signal) - 1], nullptr);
    }
    sigprocmask(SIG_SETMASK, &mask_, nullptr);
  }

 private:
  sigset_t mask_{};
  std::vector<struct sigaction> actions_{};
};
