#include "looks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <span>

#include "caller_memory.h"
#include "node_path.h"

namespace vdrsim {

namespace {

// Everybody may read and write a node, and nobody execute it.
void AnswerAccess(HeldUpCall& call, uint64_t mode) { call.Return((mode & X_OK) != 0 ? EACCES : 0); }

template <typename Status>
void Show(HeldUpCall& call, uint64_t address, const Status& status) {
  const auto bytes = std::as_bytes(std::span(&status, 1));
  call.Return(CallerMemory(call).Write({{address, bytes}}) ? 0 : EFAULT);
}

void AnswerNamed(HeldUpCall& call, const DeviceNodes& nodes, int directory, size_t path,
                 uint64_t flags) {
  // The kernel itself refuses arguments that are wrong for any file.
  constexpr uint64_t kKnownFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH |
                                   AT_EACCESS | AT_STATX_FORCE_SYNC | AT_STATX_DONT_SYNC;
  const auto node = NamedNode(call, directory, call.argument(path));
  if (!node || (flags & ~kKnownFlags) != 0) return call.Continue();
  switch (call.number()) {
    case __NR_statx:
      return Show(call, call.argument(4),
                  nodes.ExtendedStatus(*node, static_cast<unsigned>(call.argument(3))));
#ifdef __NR_access
    case __NR_access:
#endif
    case __NR_faccessat:
    case __NR_faccessat2:
      if ((call.argument(path + 1) & ~7U) != 0) return call.Continue();
      return AnswerAccess(call, call.argument(path + 1));
    default:
      return Show(call, call.argument(path + 1), nodes.Status(*node));
  }
}

}  // namespace

void AnswerLook(HeldUpCall& call, const DeviceNodes& nodes) {
  const auto directory = static_cast<int>(call.argument(0));
  switch (call.number()) {
#ifdef __NR_stat
    case __NR_stat:
    case __NR_lstat:
    case __NR_access:
      return AnswerNamed(call, nodes, AT_FDCWD, 0, 0);
#endif
    case __NR_faccessat:
      return AnswerNamed(call, nodes, directory, 1, 0);
    case __NR_statx:
      return AnswerNamed(call, nodes, directory, 1, call.argument(2));
    case __NR_newfstatat:
    case __NR_faccessat2:
      return AnswerNamed(call, nodes, directory, 1, call.argument(3));
    default:
      return call.Continue();
  }
}

}  // namespace vdrsim
