/*
 * The device, as a test wants it: put before the C library by LD_PRELOAD, it gives every command to
 * one function of the test's.
 */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdint.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vdrzax/channel.h>

enum { kDevice = 1000000 };

/* Returns 0 or an errno; `claimed` is the length that the reply is said to have. */
typedef int (*Handler)(unsigned long code, const void* input, uint32_t length, void* reply,
                       uint32_t capacity, uint32_t* claimed);

static Handler handler;
static int open_error;

void fake_device_answers_by(Handler function) { handler = function; }
void fake_device_refuses_with(int error) { open_error = error; }

int open64(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const int mode = va_arg(rest, int);
  va_end(rest);
  if (strncmp(path, "/qorv/", 6) != 0) return (int)syscall(SYS_openat, AT_FDCWD, path, flags, mode);
  if (open_error == 0) return kDevice;
  errno = open_error;
  return -1;
}

int ioctl(int descriptor, unsigned long request, ...) {
  va_list rest;
  va_start(rest, request);
  char* argument = va_arg(rest, char*);
  va_end(rest);
  if (descriptor != kDevice) return (int)syscall(SYS_ioctl, descriptor, request, argument);
  IoctlEnvelope envelope;
  memcpy(&envelope, argument, sizeof envelope);
  const int error = handler(request, envelope.inBuffer, envelope.inLength, envelope.outBuffer,
                            envelope.outLength, &envelope.outLength);
  memcpy(argument, &envelope, sizeof envelope);
  if (error == 0) return 0;
  errno = error;
  return -1;
}

int close(int descriptor) {
  return descriptor == kDevice ? 0 : (int)syscall(SYS_close, descriptor);
}
