#include "device.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vdrzax/channel.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>

namespace {

constexpr char kNodes[] = "/qorv/devices/char/zaxdriver/";
constexpr int kProgramDescriptor = 1000000;

device::Calls calls = device::Calls::Program;
device::Verdict verdict = device::Verdict::Serve;
std::span<const uint8_t> reply;
thread_local int kernelDescriptor = -1;

bool IsNode(const char* path) { return std::strncmp(path, kNodes, sizeof kNodes - 1) == 0; }

bool IsDevice(int descriptor) {
  return descriptor == kProgramDescriptor || descriptor == kernelDescriptor;
}

// Linux itself answers some small request numbers, and one of them writes to its argument.
int CallKernel(int descriptor, unsigned long request) {
  uint64_t scratch = 0;
  return static_cast<int>(syscall(SYS_ioctl, descriptor, request, &scratch));
}

void CopyReply(IoctlEnvelope* envelope) {
  if (reply.empty()) return;
  const std::size_t length = std::min<std::size_t>(reply.size(), envelope->outLength);
  std::memcpy(envelope->outBuffer, reply.data(), length);
  envelope->outLength = static_cast<uint32_t>(length);
}

}  // namespace

void device::Answer(Calls newCalls, Verdict newVerdict, std::span<const uint8_t> newReply) {
  calls = newCalls;
  verdict = newVerdict;
  reply = newReply;
}

extern "C" {

int open64(const char* path, int flags, ...) {
  if (!IsNode(path)) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
  }
  if (calls == device::Calls::Program) return kProgramDescriptor;
  kernelDescriptor = static_cast<int>(syscall(SYS_openat, AT_FDCWD, "/dev/null", flags, 0));
  return kernelDescriptor;
}

int ioctl(int descriptor, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (!IsDevice(descriptor)) {
    return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
  }
  if (calls == device::Calls::Kernel) {
    const int result = CallKernel(descriptor, request);
    if (verdict == device::Verdict::Refuse) return result;
  }
  CopyReply(static_cast<IoctlEnvelope*>(argument));
  return 0;
}

int close(int descriptor) {
  if (descriptor == kProgramDescriptor) return 0;
  if (descriptor == kernelDescriptor) kernelDescriptor = -1;
  return static_cast<int>(syscall(SYS_close, descriptor));
}

}  // extern "C"
