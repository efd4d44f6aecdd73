#pragma once

#include <chrono>
#include <cstddef>

namespace vdrctl {

// A bar on the terminal of standard error, once something has taken longer than a second. Where
// standard error is no terminal there is none.
class Progress {
 public:
  explicit Progress(std::size_t total);

  // Tells how many of all are behind; most calls show nothing.
  void Show(std::size_t done);

  // Takes the bar away.
  void Clear() const;

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t total_;
  bool onTerminal_;
  bool isShown_ = false;
  Clock::time_point next_;
};

}  // namespace vdrctl
