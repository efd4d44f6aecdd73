// Preloaded into programs that memcheck runs on a simulated datapath. Memcheck does not know the
// commands of the device, so it is told here what the kernel reads and what it has written.
#define _GNU_SOURCE
#include <stdarg.h>
#include <stdint.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <valgrind/memcheck.h>

static uint32_t word_at(const unsigned char* bytes) {
  uint32_t word;
  memcpy(&word, bytes, sizeof word);
  return word;
}

static void* pointer_at(const unsigned char* bytes) {
  void* pointer;
  memcpy(&pointer, bytes, sizeof pointer);
  return pointer;
}

// The device knows requests of one byte; all others are those of other files. The launcher of valgrind,
// which this is preloaded into as well, is no program to be looked at.
int ioctl(int descriptor, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  unsigned char* envelope = va_arg(arguments, unsigned char*);
  va_end(arguments);
  if (request > 0xff || !RUNNING_ON_VALGRIND) {
    return (int)syscall(SYS_ioctl, descriptor, request, envelope);
  }
  VALGRIND_CHECK_MEM_IS_DEFINED(envelope, 24);
  VALGRIND_CHECK_MEM_IS_DEFINED(pointer_at(envelope + 4), word_at(envelope));
  const uint32_t capacity = word_at(envelope + 12);
  VALGRIND_CHECK_MEM_IS_ADDRESSABLE(pointer_at(envelope + 16), capacity);
  const long result = syscall(SYS_ioctl, descriptor, request, envelope);
  if (result >= 0) {
    const uint32_t written = word_at(envelope + 12);
    VALGRIND_MAKE_MEM_DEFINED(pointer_at(envelope + 16), written < capacity ? written : capacity);
  }
  return (int)result;
}
