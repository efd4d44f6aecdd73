#include "device.h"

#include <fcntl.h>
#include <vdrzax/channel.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>

#include "require.h"

extern "C" {
int __real_open64(const char* path, int flags, ...);
int __real_ioctl(int descriptor, unsigned long request, ...);
int __real_close(int descriptor);
int __wrap_open64(const char* path, int flags, ...);
int __wrap_ioctl(int descriptor, unsigned long request, ...);
int __wrap_close(int descriptor);
}

namespace {

constexpr char kNodes[] = "/qorv/devices/char/zaxdriver/";
constexpr int kDescriptor = 1000000;

int openError = 0;
int opened = 0;
std::span<const device::Reply> replies;
std::vector<device::Command> commands;

int Answer(IoctlEnvelope& envelope, unsigned long code) {
  Require(opened == 1, "a command goes to an open device");
  Require(commands.size() < replies.size(), "no command too many");
  const device::Reply& reply = replies[commands.size()];
  device::Command command{.code = static_cast<uint32_t>(code),
                          .input = std::vector<uint8_t>(envelope.inLength),
                          .capacity = envelope.outLength,
                          .output = envelope.outBuffer};
  if (envelope.inLength != 0) {
    std::memcpy(command.input.data(), envelope.inBuffer, envelope.inLength);
  }
  commands.push_back(std::move(command));

  const std::size_t size = std::min<std::size_t>(reply.bytes.size(), envelope.outLength);
  if (size != 0) std::memcpy(envelope.outBuffer, reply.bytes.data(), size);
  envelope.outLength = reply.length;
  if (reply.Fails()) errno = reply.error;
  return reply.result;
}

}  // namespace

void device::Plug(int newOpenError, std::span<const Reply> newReplies) {
  openError = newOpenError;
  opened = 0;
  replies = newReplies;
  commands.clear();
}

const std::vector<device::Command>& device::Commands() { return commands; }

bool device::IsClosed() { return opened == 0; }

extern "C" {

int __wrap_open64(const char* path, int flags, ...) {
  if (std::strncmp(path, kNodes, sizeof kNodes - 1) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return __real_open64(path, flags, mode);
  }
  Require(flags == O_RDWR, "the device is opened for reading and writing");
  if (openError != 0) {
    errno = openError;
    return -1;
  }
  ++opened;
  return kDescriptor;
}

int __wrap_ioctl(int descriptor, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (descriptor != kDescriptor) return __real_ioctl(descriptor, request, argument);
  return Answer(*static_cast<IoctlEnvelope*>(argument), request);
}

int __wrap_close(int descriptor) {
  if (descriptor != kDescriptor) return __real_close(descriptor);
  --opened;
  return 0;
}

}  // extern "C"
