#pragma once

#include <cerrno>

namespace vdrzax {

// The three errors that the library itself reports. errno is assigned here and never left to the
// allocator, because an agent may bring an allocator that sets none.
inline int InvalidArgument() {
  errno = EINVAL;
  return -1;
}

inline int OutOfMemory() {
  errno = ENOMEM;
  return -1;
}

inline int ShortReply() {
  errno = EBADMSG;
  return -1;
}

}  // namespace vdrzax
