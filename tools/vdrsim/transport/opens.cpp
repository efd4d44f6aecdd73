#include "opens.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include "caller_memory.h"
#include "node_path.h"

namespace vdrsim {

namespace {

struct Opening {
  int directory;
  uint64_t path;
  int flags;
};

// What the kernel says to the structure of openat2, of which it wants all that is known here, before
// it looks at the path; an empty path is never found.
int Judge(std::span<const std::byte> how) {
  syscall(SYS_openat2, AT_FDCWD, "", how.data(), how.size());
  return errno == ENOENT ? 0 : errno;
}

// Answers the call itself, and returns nothing, where there is nothing to open.
std::optional<Opening> ReadHow(HeldUpCall& call) {
  std::array<std::byte, 4096> room;
  const uint64_t length = call.argument(3);
  open_how how{};
  if (length > room.size()) return call.Continue(), std::nullopt;
  const std::span bytes(room.data(), length);
  if (!CallerMemory(call).Read(call.argument(2), bytes)) return call.Continue(), std::nullopt;
  if (const int error = Judge(bytes)) return call.Return(error), std::nullopt;
  std::memcpy(&how, bytes.data(), sizeof how);
  // Under these an absolute path is refused or means another file; the kernel does either by
  // itself.
  if ((how.resolve & (RESOLVE_BENEATH | RESOLVE_IN_ROOT)) != 0) {
    return call.Continue(), std::nullopt;
  }
  return Opening{static_cast<int>(call.argument(0)), call.argument(1), static_cast<int>(how.flags)};
}

std::optional<Opening> ReadOpening(HeldUpCall& call) {
  switch (call.number()) {
#ifdef __NR_open
    case __NR_open:
      return Opening{AT_FDCWD, call.argument(0), static_cast<int>(call.argument(1))};
    case __NR_creat:
      return Opening{AT_FDCWD, call.argument(0), O_CREAT | O_WRONLY | O_TRUNC};
#endif
    case __NR_openat:
      return Opening{static_cast<int>(call.argument(0)), call.argument(1),
                     static_cast<int>(call.argument(2))};
    default:
      return ReadHow(call);
  }
}

}  // namespace

void AnswerOpen(HeldUpCall& call, const DeviceNodes& nodes) {
  const auto opening = ReadOpening(call);
  if (!opening) return;
  const int flags = opening->flags;
  // A descriptor that only names a path can't be given, and no command can be sent on it.
  if ((flags & O_PATH) != 0) return call.Continue();
  const auto node = NamedNode(call, opening->directory, opening->path);
  if (!node) return call.Continue();
  if ((flags & O_CREAT) != 0 && (flags & O_EXCL) != 0) return call.Return(EEXIST);
  if ((flags & O_DIRECTORY) != 0) return call.Return(ENOTDIR);
  const UniqueFd opened = nodes.Open(*node, flags);
  if (!opened) return call.Return(errno);
  call.ReturnDescriptor(opened.get(), static_cast<uint32_t>(flags) & O_CLOEXEC);
}

}  // namespace vdrsim
