#include "members.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "proc_path.h"
#include "start_failure.h"
#include "status_file.h"

namespace vdrsim {

namespace {

constexpr std::string_view kFilters = "Seccomp_filters:";

// Hands each number of a file of numbers to `use`.
template <typename Use>
void ForEachNumber(int file, const Use& use) {
  std::array<char, 4096> buffer;
  off_t offset = 0;
  pid_t number = 0;
  ssize_t length = 0;
  while ((length = pread(file, buffer.data(), buffer.size(), offset)) > 0) {
    for (const char character : std::string_view(buffer.data(), static_cast<size_t>(length))) {
      if (character >= '0' && character <= '9') {
        number = number * 10 + (character - '0');
      } else if (number != 0) {
        use(std::exchange(number, 0));
      }
    }
    offset += length;
  }
}

}  // namespace

Members::Members()
    : children_(
          open(ProcPath("/proc/self/task/{}/children", getpid()).c_str(), O_RDONLY | O_CLOEXEC)) {
  const auto filters = StatusFile::Of(getpid()).Number(kFilters);
  if (!children_ || !filters) {
    FailStart("cannot look at the children of this process", errno, "/proc must be mounted");
  }
  ownFilters_ = *filters;
}

Members::Found Members::Find() const {
  Found found;
  ForEachNumber(children_.get(), [&](pid_t child) {
    const StatusFile status = StatusFile::Of(child);
    if (!status) {
      found.isComplete &= errno == ENOENT;
    } else if (status.Number(kFilters).value_or(0) > ownFilters_) {
      found.processes.push_back(child);
    }
  });
  return found;
}

}  // namespace vdrsim
