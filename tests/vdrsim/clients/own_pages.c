// Programs whose memory is paged in by programs of the same run: by themselves.
#include <errno.h>
#include <fcntl.h>
#include <linux/userfaultfd.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "device.h"

static size_t page_size;
static int faults;

static int unavailable(void) {
  printf("no userfaultfd\n");
  return 0;
}

// Pages that are not there until somebody puts them there.
static unsigned char* missing_pages(size_t count) {
  struct uffdio_api api = {.api = UFFD_API};
  unsigned char* pages =
      mmap(NULL, count * page_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  struct uffdio_register range = {.range = {(uintptr_t)pages, count * page_size},
                                  .mode = UFFDIO_REGISTER_MODE_MISSING};
  EXPECT(pages != MAP_FAILED && ioctl(faults, UFFDIO_API, &api) == 0);
  EXPECT(ioctl(faults, UFFDIO_REGISTER, &range) == 0);
  return pages;
}

static void* set_level_from(void* page) {
  EXPECT(command(open(NORMAL_NODE, O_RDWR), 10, page) == 0);
  return NULL;
}

// Before it serves the page it asks for more than what lies behind the page: a file and a command.
static int serve(void) {
  unsigned char* page = missing_pages(1);
  pthread_t thread;
  EXPECT(pthread_create(&thread, NULL, set_level_from, page) == 0);
  struct uffd_msg fault;
  EXPECT(read(faults, &fault, sizeof fault) == sizeof fault);

  uint32_t level = 9;
  EXPECT(open("/dev/null", O_RDWR) >= 0);
  EXPECT(get_word(open(NORMAL_NODE, O_RDWR), 9, &level) == 0 && level == 0);

  static const uint32_t value = 7;
  unsigned char* content = calloc(1, page_size);
  const struct envelope set = envelope(4, &value, 0, NULL);
  memcpy(content, &set, sizeof set);
  struct uffdio_copy copy = {.dst = (uintptr_t)page, .src = (uintptr_t)content, .len = page_size};
  EXPECT(ioctl(faults, UFFDIO_COPY, &copy) == 0);
  EXPECT(pthread_join(thread, NULL) == 0);
  EXPECT(get_word(open(NORMAL_NODE, O_RDWR), 9, &level) == 0 && level == 7);
  EXPECT(set_word(open(NORMAL_NODE, O_RDWR), 10, 0) == 0);
  return 0;
}

// As many callers as are asked for, whose pages nobody ever serves. Tells when `awaited` of them are
// known to wait.
static int block(int callers, int awaited) {
  unsigned char* pages = missing_pages((size_t)callers);
  for (int i = 0; i < callers; ++i) {
    pthread_t thread;
    EXPECT(pthread_create(&thread, NULL, set_level_from, pages + (size_t)i * page_size) == 0);
  }
  for (int i = 0; i < awaited; ++i) {
    struct uffd_msg fault;
    EXPECT(read(faults, &fault, sizeof fault) == sizeof fault);
  }
  EXPECT(write(STDOUT_FILENO, "blocked\n", 8) == 8);
  for (;;) pause();
}

// own_pages serve | block CALLERS AWAITED
int main(int argc, char** argv) {
  page_size = (size_t)sysconf(_SC_PAGESIZE);
  faults = (int)syscall(SYS_userfaultfd, O_CLOEXEC);
  if (faults < 0) return unavailable();
  if (argc == 4 && strcmp(argv[1], "block") == 0) return block(atoi(argv[2]), atoi(argv[3]));
  return serve();
}
