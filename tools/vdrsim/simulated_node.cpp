#include "simulated_node.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>

#include "start_failure.h"

namespace vdrsim {

namespace {

constexpr std::string_view kNodePaths[] = {"/qorv/devices/char/zaxdriver/ryn_vdr",
                                           "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade"};
static_assert(kNodePaths[1].size() < kNodePathRoom);

// Linux 6.3 and later; where a system demands it, files without it are refused.
constexpr unsigned kNeverExecutable = 0x8;

UniqueFd CreateMemoryFile() {
  constexpr unsigned flags = MFD_CLOEXEC | MFD_ALLOW_SEALING;
  UniqueFd file(memfd_create("vdrsim", flags | kNeverExecutable));
  if (!file && errno == EINVAL) file = UniqueFd(memfd_create("vdrsim", flags));
  return file;
}

// Never asks a file system to look at the file again: one that a program of the run serves would
// wait for this very process.
bool Examine(const char* path, struct statx& status) {
  return statx(AT_FDCWD, path, AT_STATX_DONT_SYNC, STATX_INO, &status) == 0;
}

}  // namespace

bool IsNodePath(std::string_view path) { return path == kNodePaths[0] || path == kNodePaths[1]; }

SimulatedNode::SimulatedNode() : file_(CreateMemoryFile()) {
  if (!file_) FailStart("cannot create a memory file", errno);
  constexpr int seals = F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_WRITE | F_SEAL_SEAL;
  if (fcntl(file_.get(), F_ADD_SEALS, seals) != 0) FailStart("cannot seal a memory file", errno);
  struct statx status {};
  if (!Examine(fmt::format("/proc/self/fd/{}", file_.get()).c_str(), status)) {
    FailStart("cannot look at /proc/self/fd", errno, "/proc must be mounted");
  }
  deviceMajor_ = status.stx_dev_major;
  deviceMinor_ = status.stx_dev_minor;
  inode_ = status.stx_ino;
}

UniqueFd SimulatedNode::Open(int flags) const {
  const std::string path = fmt::format("/proc/self/fd/{}", file_.get());
  return UniqueFd(open(path.c_str(), (flags & (O_ACCMODE | O_NONBLOCK)) | O_CLOEXEC));
}

bool SimulatedNode::IsBehind(pid_t thread, uint32_t descriptor) const {
  struct statx status {};
  return Examine(fmt::format("/proc/{}/fd/{}", thread, descriptor).c_str(), status) &&
         status.stx_ino == inode_ && status.stx_dev_major == deviceMajor_ &&
         status.stx_dev_minor == deviceMinor_;
}

}  // namespace vdrsim
