#include "files.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

#include "output/output.h"

namespace vdrctl {

namespace {

struct Close {
  void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};
using Stream = std::unique_ptr<std::FILE, Close>;

bool IsStandard(std::string_view file) { return file == "-"; }

}  // namespace

std::vector<uint8_t> ReadFile(const std::string& file, std::size_t most, const std::string& hint) {
  const Stream opened(IsStandard(file) ? nullptr : std::fopen(file.c_str(), "re"));
  if (!IsStandard(file) && !opened) throw FileFailure(file, errno);
  std::FILE* stream = opened ? opened.get() : stdin;
  const std::string name = opened ? file : "standard input";

  // Not a byte is taken from a pipe beyond the one that tells that there is more.
  static_cast<void>(std::setvbuf(stream, nullptr, _IONBF, 0));
  std::vector<uint8_t> bytes;
  while (bytes.size() <= most) {
    const std::size_t done = bytes.size();
    bytes.resize(done + std::min<std::size_t>(65536, most + 1 - done));
    const std::size_t length = std::fread(bytes.data() + done, 1, bytes.size() - done, stream);
    bytes.resize(done + length);
    if (length == 0) break;
  }
  if (std::ferror(stream) != 0) throw FileFailure(name, errno);
  if (bytes.size() > most) throw FileFailure(name, EFBIG, hint);
  return bytes;
}

ReplyFile::ReplyFile(const char* file) : name_(file ? file : "") {
  if (!file) return;
  if (IsStandard(name_)) {
    name_ = "standard output";
    file_ = STDOUT_FILENO;
    return;
  }
  isNew_ = access(file, F_OK) != 0;
  file_ = open(file, O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  isOwn_ = true;
  if (file_ < 0) throw FileFailure(name_, errno);
}

ReplyFile::~ReplyFile() {
  if (isNew_) static_cast<void>(unlink(name_.c_str()));
  if (isOwn_) close(file_);
}

// What can't be cut off, as a FIFO, has nothing in it.
void ReplyFile::Write(std::span<const uint8_t> bytes) {
  if (isOwn_) static_cast<void>(!ftruncate(file_, 0));
  isNew_ = false;
  while (!bytes.empty()) {
    const ssize_t written = write(file_, bytes.data(), bytes.size());
    if (written < 0) throw FileFailure(name_, errno);
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
}

void ReplyFile::Put(Output& out, uint64_t length, std::span<const uint8_t> bytes) {
  if (*this) return Write(bytes);
  out.Bytes(length, bytes);
}

}  // namespace vdrctl
