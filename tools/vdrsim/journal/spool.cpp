#include "journal/spool.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <type_traits>

namespace vdrsim {

namespace {

static_assert(std::is_trivially_copyable_v<Entry>);

// In a directory for such files; /var/tmp is on a disk where /tmp is not.
UniqueFd CreateFileWithoutName() {
  for (const char* directory :
       {static_cast<const char*>(std::getenv("TMPDIR")), "/var/tmp", "/tmp"}) {
    if (!directory) continue;
    UniqueFd file(open(directory, O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (file) return file;
  }
  return {};
}

bool WriteAt(int file, std::span<const std::byte> bytes, off_t offset) {
  while (!bytes.empty()) {
    const ssize_t written = pwrite(file, bytes.data(), bytes.size(), offset);
    if (written <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(written));
    offset += written;
  }
  return true;
}

bool ReadAt(int file, std::span<std::byte> bytes, off_t offset) {
  while (!bytes.empty()) {
    const ssize_t length = pread(file, bytes.data(), bytes.size(), offset);
    if (length <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(length));
    offset += length;
  }
  return true;
}

// The capacity to ask for, so that it is seldom asked for.
size_t GrownTo(size_t size, size_t capacity) {
  return size <= capacity ? capacity : std::max(size, 2 * capacity);
}

}  // namespace

void Spool::Append(const Entry& entry) {
  if (newest_.size() >= memory_) Spill();
  newest_.reserve(GrownTo(newest_.size() + sizeof entry + entry.input.size(), newest_.capacity()));
  Entry own = entry;
  own.output = {};  // is not kept, and gone soon
  const auto head = std::as_bytes(std::span(&own, 1));
  newest_.insert(newest_.end(), head.begin(), head.end());
  newest_.insert(newest_.end(), entry.input.begin(), entry.input.end());
}

// What can't be written is tried again with the next entry.
void Spool::Spill() {
  if (!file_) file_ = CreateFileWithoutName();
  if (!WriteAt(file_.get(), newest_, end_)) return;
  spilled_.push_back(newest_.size());
  end_ += static_cast<off_t>(newest_.size());
  newest_.clear();
}

bool Spool::Take(std::vector<std::byte>& batch) {
  batch.clear();
  if (spilled_.empty()) {
    std::swap(batch, newest_);
    return true;
  }
  batch.resize(spilled_.front());
  const bool isRead = ReadAt(file_.get(), batch, start_);
  start_ += static_cast<off_t>(batch.size());
  spilled_.pop_front();
  if (spilled_.empty()) {
    start_ = end_ = 0;
    (void)!ftruncate(file_.get(), 0);
  }
  if (!isRead) batch.clear();
  return isRead;
}

}  // namespace vdrsim
