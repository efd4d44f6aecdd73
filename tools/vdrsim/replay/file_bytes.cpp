#include "replay/file_bytes.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace vdrsim {

namespace {

constexpr size_t kRoom = size_t{256} << 10;

[[noreturn]] void Fail(const std::string& path, int error) {
  throw std::runtime_error(fmt::format("{}: {}", path, std::strerror(error)));
}

}  // namespace

FileBytes::FileBytes(const std::string& path)
    : path_(path), file_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)), room_(kRoom) {
  if (!file_) Fail(path, errno);
  struct stat status {};
  if (fstat(file_.get(), &status) != 0) Fail(path, errno);
  if (S_ISDIR(status.st_mode)) Fail(path, EISDIR);
  // Replies are read from it again and again.
  if (!S_ISREG(status.st_mode)) throw std::runtime_error(path + ": not a plain file");
}

bool FileBytes::Fill() {
  start_ += held_.size();
  next_ = 0;
  const ssize_t length = pread(file_.get(), room_.data(), room_.size(), static_cast<off_t>(start_));
  if (length < 0) Fail(path_, errno);
  held_ = std::span(room_).first(static_cast<size_t>(length));
  return !held_.empty();
}

bool FileBytes::ReadAt(uint64_t offset, std::span<char> bytes) const noexcept {
  while (!bytes.empty()) {
    const ssize_t length =
        pread(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (length <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(length));
    offset += static_cast<uint64_t>(length);
  }
  return true;
}

}  // namespace vdrsim
