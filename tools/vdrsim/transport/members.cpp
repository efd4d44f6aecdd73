#include "members.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "proc_path.h"
#include "start_failure.h"
#include "status_file.h"

namespace vdrsim {

namespace {

constexpr std::string_view kFilters = "Seccomp_filters:";

// Hands each number of a file to `use`, in which each has a space behind it.
template <typename Use>
void ForEachNumber(int file, const Use& use) {
  std::array<char, 4096> buffer;
  off_t offset = 0;
  pid_t number = 0;
  ssize_t length = 0;
  while ((length = pread(file, buffer.data(), buffer.size(), offset)) > 0) {
    for (const char character : std::string_view(buffer.data(), static_cast<size_t>(length))) {
      if (character == ' ') {
        use(std::exchange(number, 0));
      } else {
        number = number * 10 + (character - '0');
      }
    }
    offset += length;
  }
}

}  // namespace

Members::Members()
    : children_(
          open(ProcPath("/proc/self/task/{}/children", getpid()).c_str(), O_RDONLY | O_CLOEXEC)) {
  constexpr const char* kWhat = "cannot look at the children of this process";
  if (!children_) FailStart(kWhat, errno);
  const StatusFile own = StatusFile::Of(getpid());
  if (!own) FailStart(kWhat, errno);
  const auto filters = own.Number(kFilters);
  if (!filters) FailStart(kWhat, ENOSYS, "it takes Linux 5.14 or later with CONFIG_SECCOMP_FILTER");
  ownFilters_ = *filters;
}

Members::Found Members::Find() const {
  Found found;
  ForEachNumber(children_.get(), [&](pid_t child) {
    const StatusFile status = StatusFile::Of(child);
    if (!status) {
      found.isComplete &= errno == ENOENT;
    } else if (status.Number(kFilters) > ownFilters_) {
      found.processes.push_back(child);
    }
  });
  return found;
}

}  // namespace vdrsim
