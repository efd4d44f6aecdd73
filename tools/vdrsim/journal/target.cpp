#include "journal/target.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace vdrsim {

namespace {

constexpr int kLookIntervalMs = 20;
constexpr mode_t kPermissions = 0666;

// Does not wait for a reader, neither now nor when it is written to.
UniqueFd OpenToWrite(const std::string& path) {
  return UniqueFd(open(path.c_str(),
                       O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                       kPermissions));
}

bool IsFifo(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

bool IsPlainFile(int file) {
  struct stat status {};
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

void AwaitRoom(int file) {
  pollfd room{file, POLLOUT, 0};
  poll(&room, 1, kLookIntervalMs);
}

}  // namespace

Target Target::File(const std::string& path) {
  Target target;
  target.name_ = path;
  const int error = target.Open();
  if (error != 0 && error != EAGAIN) {
    throw std::runtime_error(fmt::format("{}: {}", path, std::strerror(error)));
  }
  target.isPlainFile_ = IsPlainFile(target.file_.get());
  return target;
}

Target Target::StandardError() {
  Target target;
  target.file_ = UniqueFd(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3));
  return target;
}

// A FIFO that nobody reads yet can't be opened.
int Target::Open() {
  file_ = OpenToWrite(name_);
  if (file_) return 0;
  return errno == ENXIO && IsFifo(name_) ? EAGAIN : errno;
}

int Target::AwaitReader(const std::atomic<bool>& givesUp) {
  while (!givesUp) {
    const int error = Open();
    if (error != EAGAIN) return error;
    poll(nullptr, 0, kLookIntervalMs);
  }
  return ECANCELED;
}

int Target::Write(std::string_view text, const std::atomic<bool>& givesUp) {
  if (!file_) {
    if (const int error = AwaitReader(givesUp); error != 0) return error;
  }
  while (!text.empty()) {
    const ssize_t written = write(file_.get(), text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<size_t>(written));
    } else if (errno == EAGAIN && !givesUp) {
      AwaitRoom(file_.get());
    } else if (errno != EINTR) {
      return errno == EAGAIN ? ECANCELED : errno;
    }
  }
  return 0;
}

}  // namespace vdrsim
