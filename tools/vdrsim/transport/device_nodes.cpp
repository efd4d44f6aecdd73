#include "device_nodes.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/sysmacros.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "node_path.h"
#include "proc_path.h"
#include "start_failure.h"

namespace vdrsim {

namespace {

constexpr Node kNodes[] = {Node::Normal, Node::Upgrade};

// Linux 6.3 and later; where a system demands it, files without it are refused.
constexpr unsigned kNeverExecutable = 0x8;

constexpr mode_t kPermissions = 0666;

// For local use; no driver has it.
constexpr unsigned kShownMajor = 240;

UniqueFd CreateMemoryFile() {
  constexpr unsigned flags = MFD_CLOEXEC | MFD_ALLOW_SEALING;
  UniqueFd file(memfd_create("vdrsim", flags | kNeverExecutable));
  if (!file && errno == EINVAL) file = UniqueFd(memfd_create("vdrsim", flags));
  if (!file) FailStart("cannot create a memory file", errno);
  constexpr int seals = F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_WRITE | F_SEAL_SEAL;
  if (fcntl(file.get(), F_ADD_SEALS, seals) != 0) FailStart("cannot seal a memory file", errno);
  return file;
}

// Never asks a file system to look at the file again: one that a program of the run serves would
// wait for this very process.
bool Examine(const char* path, struct statx& status) {
  return statx(AT_FDCWD, path, AT_STATX_DONT_SYNC, STATX_INO | STATX_TYPE, &status) == 0;
}

bool IsSameFile(const struct statx& one, const struct statx& other) {
  return one.stx_ino == other.stx_ino && one.stx_dev_major == other.stx_dev_major &&
         one.stx_dev_minor == other.stx_dev_minor;
}

// What stands there may be a plain file, on which no command can have an effect.
std::optional<dev_t> RealDevice(Node node, bool isAllowed) {
  struct stat status {};
  if (stat(NodePath(node), &status) != 0) return std::nullopt;
  if (!isAllowed) {
    throw StartFailure(
        fmt::format("this host has {}: a program could open it, rather than the simulated one, in "
                    "ways that are not seen (--beside-real-device starts the run all the same, and "
                    "refuses commands on it)",
                    NodePath(node)));
  }
  if (!S_ISCHR(status.st_mode)) return std::nullopt;
  return status.st_rdev;
}

// Numbers of processes mean nothing in another namespace's /proc.
void RequireOwnProc() {
  std::error_code error;
  const auto number = std::filesystem::read_symlink("/proc/self", error);
  if (error) FailStart("cannot look at /proc/self", error.value(), "/proc must be mounted");
  if (number != std::to_string(getpid())) {
    throw StartFailure("/proc shows another PID namespace: mount one of this namespace's own");
  }
}

}  // namespace

DeviceNodes::DeviceNodes(bool isBesideRealDevice) {
  RequireOwnProc();
  for (const Node node : kNodes) {
    const auto index = static_cast<size_t>(node);
    real_[index] = RealDevice(node, isBesideRealDevice);
    auto& [file, status] = simulated_[index];
    file = CreateMemoryFile();
    if (!Examine(ProcPath("/proc/self/fd/{}", file.get()).c_str(), status)) {
      FailStart("cannot look at /proc/self/fd", errno, "/proc must be mounted");
    }
  }
}

// A caller can take the permissions away from the file, as from a device that it owns; here the
// next one to open it need not suffer for that.
UniqueFd DeviceNodes::Open(Node node, int flags) const {
  const UniqueFd& file = Of(node).file;
  const ProcPath path("/proc/self/fd/{}", file.get());
  flags = (flags & (O_ACCMODE | O_NONBLOCK)) | O_CLOEXEC;
  UniqueFd opened(open(path.c_str(), flags));
  for (int tries = 0; !opened && errno == EACCES && tries < 100; ++tries) {
    if (fchmod(file.get(), kPermissions) != 0) break;
    opened = UniqueFd(open(path.c_str(), flags));
  }
  return opened;
}

Behind DeviceNodes::Identify(pid_t thread, uint32_t descriptor) const {
  using enum Behind::What;
  struct statx status {};
  if (!Examine(ProcPath("/proc/{}/fd/{}", thread, descriptor).c_str(), status)) {
    if (errno != ENOENT) return {Unknown};
    // Where /proc hides what may not be looked at, the process seems not to be there either.
    return {Examine(ProcPath("/proc/{}/fd", thread).c_str(), status) ? OtherFile : Unknown};
  }
  for (const Node node : kNodes) {
    if (IsSameFile(status, Of(node).status)) return {SimulatedNode, node};
  }
  const dev_t device = makedev(status.stx_rdev_major, status.stx_rdev_minor);
  const bool isReal = S_ISCHR(status.stx_mode) && (device == real_[0] || device == real_[1]);
  return {isReal ? RealDevice : OtherFile};
}

struct stat DeviceNodes::Status(Node node) const {
  struct stat status {};
  fstat(Of(node).file.get(), &status);
  status.st_mode = S_IFCHR | kPermissions;
  status.st_nlink = 1;
  status.st_rdev = makedev(kShownMajor, static_cast<unsigned>(node));
  return status;
}

struct statx DeviceNodes::ExtendedStatus(Node node, unsigned mask) const {
  struct statx status {};
  statx(Of(node).file.get(), "", AT_EMPTY_PATH, mask, &status);
  status.stx_mode = S_IFCHR | kPermissions;
  status.stx_nlink = 1;
  status.stx_rdev_major = kShownMajor;
  status.stx_rdev_minor = static_cast<uint32_t>(node);
  return status;
}

}  // namespace vdrsim
