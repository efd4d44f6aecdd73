#pragma once

#include <sys/resource.h>

#include <csignal>

// As long as it lives, this process may have no more of something. A file that may not grow is an
// error then and no signal.
class SoftLimit {
 public:
  SoftLimit(__rlimit_resource resource, rlim_t limit) : resource_(resource) {
    getrlimit(resource, &before_);
    const rlimit now{.rlim_cur = limit, .rlim_max = before_.rlim_max};
    onTooLarge_ = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(resource, &now);
  }
  SoftLimit(const SoftLimit&) = delete;
  ~SoftLimit() {
    setrlimit(resource_, &before_);
    (void)std::signal(SIGXFSZ, onTooLarge_);
  }

 private:
  __rlimit_resource resource_;
  rlimit before_{};
  void (*onTooLarge_)(int) = nullptr;
};
