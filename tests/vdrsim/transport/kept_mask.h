#pragma once

#include <signal.h>

#include <ctime>

// Puts the signal mask of the test back at its end, and takes all signals before that still wait.
class KeptMask {
 public:
  KeptMask() { sigprocmask(SIG_SETMASK, nullptr, &before_); }
  KeptMask(const KeptMask&) = delete;
  ~KeptMask() {
    sigset_t all;
    sigfillset(&all);
    constexpr timespec kAtOnce{};
    while (sigtimedwait(&all, nullptr, &kAtOnce) > 0) {
    }
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  sigset_t before_{};
};
