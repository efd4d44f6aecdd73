#include "files.h"

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

// A full disk may show only when the last bytes leave the buffer.
void WriteFile(const char* file, std::span<const uint8_t> bytes) {
  Stream opened(IsStandard(file) ? nullptr : std::fopen(file, "we"));
  if (!IsStandard(file) && !opened) throw FileFailure(file, errno);
  std::FILE* stream = opened ? opened.get() : stdout;
  // An empty reply may come without an address.
  const bool written =
      bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size();
  if (!written || std::fflush(stream) != 0) {
    throw FileFailure(IsStandard(file) ? "standard output" : file, errno);
  }
}

void PutReply(Output& out, const char* file, uint64_t length, std::span<const uint8_t> bytes) {
  if (file) return WriteFile(file, bytes);
  out.Bytes(length, bytes);
}

}  // namespace vdrctl
