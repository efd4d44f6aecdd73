#include "files.h"

#include <fmt/format.h>
#include <vdrzax/channel.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

namespace vdrctl {

namespace {

// The block of all that a command can be told.
constexpr std::size_t kLongestInput = sizeof(IoctlParams);

struct Close {
  void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};
using Stream = std::unique_ptr<std::FILE, Close>;

void WriteFile(const char* file, std::span<const uint8_t> bytes);

}  // namespace

std::vector<uint8_t> ReadInput(const char* file) {
  const bool standard = std::string_view(file) == "-";
  const Stream opened(standard ? nullptr : std::fopen(file, "re"));
  if (!standard && !opened) throw FileFailure(file, errno);
  std::FILE* stream = standard ? stdin : opened.get();

  // Not a byte is taken from a pipe beyond the one that tells that the input is too long.
  std::setbuf(stream, nullptr);
  std::vector<uint8_t> bytes(kLongestInput + 1);
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream));
  if (std::ferror(stream)) throw FileFailure(file, errno);
  if (bytes.size() > kLongestInput) {
    throw FileFailure(file, EFBIG,
                      fmt::format("the input of a command has at most {} bytes", kLongestInput));
  }
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
