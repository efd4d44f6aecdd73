#include "batch/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include "common/standard_streams.h"

namespace vdrctl {

namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kInterval{100};
constexpr std::size_t kWidth = 40;

// Back to the first column, and nothing behind the cursor.
constexpr const char* kClearLine = "\r\x1b[K";

}  // namespace

Progress::Progress(std::size_t total)
    : total_(total), onTerminal_(isatty(STDERR_FILENO) != 0), next_(Clock::now() + kPatience) {}

void Progress::Show(std::size_t done) {
  if (!onTerminal_ || Clock::now() < next_) return;
  next_ = Clock::now() + kInterval;
  const std::size_t filled = kWidth * done / total_;
  tools::Tell(fmt::format("{}[{:=<{}}{:{}}] {}/{}", kClearLine, "", filled, "", kWidth - filled,
                          done, total_));
  isShown_ = true;
}

void Progress::Clear() const {
  if (isShown_) tools::Tell(kClearLine);
}

}  // namespace vdrctl
