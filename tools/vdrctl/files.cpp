#include "files.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

namespace vdrctl {

namespace {

struct Close {
  void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};
using Stream = std::unique_ptr<std::FILE, Close>;

void WriteFile(const char* file, std::span<const uint8_t> bytes);

}  // namespace

std::vector<uint8_t> ReadFile(const char* file, std::size_t most) {
  const bool standard = std::string_view(file) == "-";
  const Stream opened(standard ? nullptr : std::fopen(file, "re"));
  if (!standard && !opened) throw FileFailure(file, errno);
  std::FILE* stream = standard ? stdin : opened.get();

  std::vector<uint8_t> bytes;
  uint8_t part[65536];
  while (const std::size_t length = std::fread(part, 1, sizeof part, stream)) {
    if (length > most - bytes.size()) throw FileFailure(file, EFBIG);
    bytes.insert(bytes.end(), part, part + length);
  }
  if (std::ferror(stream)) throw FileFailure(file, errno);
  return bytes;
}

void PutReply(Output& out, const char* file, uint32_t length, std::span<const uint8_t> bytes) {
  if (!file) {
    out.Reply(length, bytes);
  } else if (std::string_view(file) == "-") {
    out.Raw(bytes);
  } else {
    WriteFile(file, bytes);
  }
}

namespace {

void WriteFile(const char* file, std::span<const uint8_t> bytes) {
  Stream stream(std::fopen(file, "we"));
  if (!stream) throw FileFailure(file, errno);
  // An empty reply may come without an address.
  if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size()) {
    throw FileFailure(file, errno);
  }
  // A full disk may show only when the last bytes leave the buffer.
  if (std::fclose(stream.release()) != 0) throw FileFailure(file, errno);
}

}  // namespace

}  // namespace vdrctl
