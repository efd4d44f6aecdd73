#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "device.h"

static size_t page_size;

// Two pages of which the second is not there.
static unsigned char* page_before_nothing(void) {
  unsigned char* pages =
      mmap(NULL, 2 * page_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  EXPECT(pages != MAP_FAILED && munmap(pages + page_size, page_size) == 0);
  return pages;
}

static void paths_that_end_with_the_page(unsigned char* page) {
  char* path = (char*)page + page_size - sizeof NORMAL_NODE;
  memcpy(path, NORMAL_NODE, sizeof NORMAL_NODE);
  const int device = open(path, O_RDWR);
  EXPECT(device >= 0);
  close(device);
  // Without its terminator it is no path.
  memmove(path + 1, path, sizeof NORMAL_NODE - 1);
  EXPECT(open(path + 1, O_RDWR) < 0 && errno == EFAULT);
}

static void a_path_across_two_pages(void) {
  char* pages =
      mmap(NULL, 2 * page_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  EXPECT(pages != MAP_FAILED);
  for (size_t before = 1; before < sizeof NORMAL_NODE; ++before) {
    char* path = pages + page_size - before;
    memcpy(path, NORMAL_NODE, sizeof NORMAL_NODE);
    const int device = open(path, O_RDWR);
    EXPECT(device >= 0);
    close(device);
  }
}

static void bad_envelopes(int device, unsigned char* page) {
  uint32_t level = 5;
  EXPECT(command(device, 9, NULL) == EFAULT);
  EXPECT(command(device, 9, (void*)8) == EFAULT);
  EXPECT(command(device, 9, (void*)-8L) == EFAULT);
  EXPECT(command(device, 9, page + page_size - 23) == EFAULT);
  // One that ends with the page is as good as any other.
  const struct envelope good = envelope(0, NULL, 4, &level);
  memcpy(page + page_size - 24, &good, 24);
  EXPECT(command(device, 9, page + page_size - 24) == 0 && level == 0);

  // Where the length can't be written back, a command must not take effect.
  uint32_t value = 3;
  const struct envelope set = envelope(4, &value, 0, NULL);
  memcpy(page, &set, 24);
  EXPECT(mprotect(page, page_size, PROT_READ) == 0);
  EXPECT(command(device, 10, page) == EFAULT);
  EXPECT(get_word(device, 9, &level) == 0 && level == 0);
  EXPECT(mprotect(page, page_size, PROT_READ | PROT_WRITE) == 0);
}

static void bad_buffers(int device, unsigned char* page) {
  struct envelope argument = envelope(968, NULL, 0, NULL);
  EXPECT(command(device, 3, &argument) == EFAULT);
  argument = envelope(968, page + page_size - 967, 0, NULL);
  EXPECT(command(device, 3, &argument) == EFAULT);

  unsigned char block[968] = "edge-1";
  argument = envelope(968, block, 577, page + page_size - 576);
  EXPECT(command(device, 1, &argument) == EFAULT);
  EXPECT(out_length(&argument) == 577);
  argument = envelope(968, block, 577, NULL);
  EXPECT(command(device, 1, &argument) == EFAULT);
  argument = envelope(968, block, 577, page + page_size - 577);
  EXPECT(command(device, 1, &argument) == 0);

  EXPECT(mprotect(page, page_size, PROT_READ) == 0);
  argument = envelope(0, NULL, 4, page);
  EXPECT(command(device, 9, &argument) == EFAULT);
  EXPECT(mprotect(page, page_size, PROT_READ | PROT_WRITE) == 0);
}

static void wrong_lengths(int device) {
  static const uint32_t lengths[] = {0, 4, 967, 969, 4096, 0x80000000U, 0xffffffffU};
  static unsigned char block[4096] = "edge-1";
  for (size_t i = 0; i < sizeof lengths / sizeof *lengths; ++i) {
    struct envelope argument = envelope(lengths[i], block, 0, NULL);
    EXPECT(command(device, 3, &argument) == EINVAL);
  }
  // One that no command has is not even read.
  struct envelope longer = envelope(969, (void*)8, 0, NULL);
  EXPECT(command(device, 3, &longer) == EINVAL);
  // Nor is one that is longer than the kernel copies at once, on the code that takes any length.
  longer = envelope(0x7ffff001, (void*)8, 0, NULL);
  EXPECT(command(device, 255, &longer) == EINVAL);
  longer = envelope(0x7ffff000, (void*)8, 0, NULL);
  const int longest = command(device, 255, &longer);
  EXPECT(longest == EFAULT || longest == ENOMEM);
  unsigned char reply[577];
  memset(reply, 0xaa, sizeof reply);
  struct envelope argument = envelope(968, block, 576, reply);
  EXPECT(command(device, 1, &argument) == EINVAL);
  EXPECT(out_length(&argument) == 576 && reply[0] == 0xaa);
  argument = envelope(968, block, 0xffffffffU, reply);
  EXPECT(command(device, 1, &argument) == 0);
  EXPECT(out_length(&argument) == 577 && memcmp(reply, "edge-1", 7) == 0);
}

static void unknown_codes(int device) {
  static const uint32_t codes[] = {105, 175, 0x7fffffff, 0x80000000U, 0xffffffffU};
  static unsigned char block[968];
  for (size_t i = 0; i < sizeof codes / sizeof *codes; ++i) {
    struct envelope argument = envelope(968, block, 577, block);
    EXPECT(command(device, codes[i], &argument) == ENOTTY);
    EXPECT(out_length(&argument) == 577);
    EXPECT(command(device, codes[i], NULL) == (codes[i] < 256 ? EFAULT : ENOTTY));
  }
  // The kernel knows 32 bits of a request number; what a caller's sign extension adds is lost.
  struct envelope argument = envelope(0, NULL, 4, block);
  EXPECT(syscall(SYS_ioctl, device, 0xffffffff00000009UL, &argument) == 0);
}

// Where there is no room for so much.
int check_too_large(void) {
  struct envelope argument = envelope(0x7ffff000, (void*)8, 0, NULL);
  EXPECT(command(open(NORMAL_NODE, O_RDWR), 255, &argument) == ENOMEM);
  return 0;
}

int check_malformed(void) {
  page_size = (size_t)sysconf(_SC_PAGESIZE);
  unsigned char* page = page_before_nothing();
  paths_that_end_with_the_page(page);
  a_path_across_two_pages();
  const int device = open(NORMAL_NODE, O_RDWR);
  EXPECT(set_instance("edge-1", 1) == 0);
  bad_envelopes(device, page);
  bad_buffers(device, page);
  wrong_lengths(device);
  unknown_codes(device);

  uint32_t level = 5;
  EXPECT(get_word(device, 9, &level) == 0 && level == 0);
  EXPECT(delete_instance("edge-1") == 0);
  return 0;
}
