#include "device.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

struct envelope envelope(uint32_t in_length, const void* in, uint32_t out_length, void* out) {
  const uint64_t in_address = (uint64_t)(uintptr_t)in;
  const uint64_t out_address = (uint64_t)(uintptr_t)out;
  struct envelope result;
  memcpy(result.bytes, &in_length, 4);
  memcpy(result.bytes + 4, &in_address, 8);
  memcpy(result.bytes + 12, &out_length, 4);
  memcpy(result.bytes + 16, &out_address, 8);
  return result;
}

uint32_t out_length(const struct envelope* envelope) {
  uint32_t length;
  memcpy(&length, envelope->bytes + 12, 4);
  return length;
}

int command(int device, uint32_t code, void* envelope) {
  return syscall(SYS_ioctl, device, (unsigned long)code, envelope) < 0 ? errno : 0;
}

int command_on_name(int device, uint32_t code, const char* name, void* out, uint32_t* room) {
  unsigned char block[968] = {0};
  strncpy((char*)block, name, 64);
  struct envelope argument = envelope(968, block, room ? *room : 0, out);
  const int error = command(device, code, &argument);
  if (room) *room = out_length(&argument);
  return error;
}

int get_word(int device, uint32_t code, uint32_t* value) {
  struct envelope argument = envelope(0, NULL, 4, value);
  return command(device, code, &argument);
}

int set_word(int device, uint32_t code, uint32_t value) {
  struct envelope argument = envelope(4, &value, 0, NULL);
  return command(device, code, &argument);
}

int answers(int device) {
  uint32_t level = 99;
  return get_word(device, 9, &level) == 0 && level == 0;
}

int set_instance(const char* name, uint32_t second) {
  unsigned char block[968] = {0};
  strncpy((char*)block, name, 64);
  memcpy(block + 256, &second, 4);
  struct envelope argument = envelope(968, block, 0, NULL);
  const int device = open(NORMAL_NODE, O_RDWR);
  if (device < 0) return errno;
  const int error = command(device, 2, &argument);
  close(device);
  return error;
}

int delete_instance(const char* name) {
  const int device = open(NORMAL_NODE, O_RDWR);
  if (device < 0) return errno;
  const int error = command_on_name(device, 3, name, NULL, NULL);
  close(device);
  return error;
}

void give_up(const char* file, int line, const char* expectation) {
  (void)fprintf(stderr, "%s:%d: %s (errno %d)\n", file, line, expectation, errno);
  exit(1);
}
