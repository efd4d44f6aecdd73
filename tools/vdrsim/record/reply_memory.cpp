#include "record/reply_memory.h"

#include <sys/mman.h>
#include <unistd.h>

namespace vdrsim {

ReplyMemory::ReplyMemory(uint32_t size) : size_(size), isUsable_(size == 0) {
  if (size == 0) return;
  file_ = UniqueFd(memfd_create("vdrsim-reply", MFD_CLOEXEC));
  if (ftruncate(file_.get(), size) != 0) return;
  void* start = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file_.get(), 0);
  if (start == MAP_FAILED) return;
  start_ = static_cast<std::byte*>(start);
  isUsable_ = true;
}

ReplyMemory::~ReplyMemory() {
  if (start_) munmap(start_, size_);
}

uint32_t ReplyMemory::Written() const {
  uint32_t end = EndOfTouched();
  while (end > 0 && start_[end - 1] == std::byte{0}) --end;
  return end;
}

// Pages that nobody wrote to are holes of the file; to look at them would make them.
uint32_t ReplyMemory::EndOfTouched() const {
  off_t end = 0;
  for (off_t start = lseek(file_.get(), 0, SEEK_DATA); start >= 0;
       start = lseek(file_.get(), end, SEEK_DATA)) {
    end = lseek(file_.get(), start, SEEK_HOLE);
  }
  return static_cast<uint32_t>(end);
}

}  // namespace vdrsim
