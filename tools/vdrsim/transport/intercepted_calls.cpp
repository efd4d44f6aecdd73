#include "intercepted_calls.h"

#include <sys/syscall.h>

#include "device_calls.h"
#include "looks.h"
#include "opens.h"

namespace vdrsim {

void InterceptedCalls::Answer(HeldUpCall& call) const noexcept {
  switch (call.number()) {
    case __NR_ioctl:
      return AnswerIoctl(call, nodes_, executor_);
#ifdef __NR_open
    case __NR_open:
    case __NR_creat:
#endif
    case __NR_openat:
    case __NR_openat2:
      return AnswerOpen(call, nodes_);
    default:
      return AnswerLook(call, nodes_);
  }
}

}  // namespace vdrsim
