#include "common/standard_streams.h"

#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

namespace tools {

namespace {

iovec Part(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }

}  // namespace

void Complain(std::string_view program, std::string_view line, std::string_view advice) noexcept {
  if (advice.empty()) return Complain(program, {line});
  Complain(program, {line, "\n", advice});
}

void Complain(std::string_view program, std::initializer_list<std::string_view> line) noexcept {
  std::array<iovec, 3 + 8> parts{Part(program), Part(": ")};
  iovec* const end = std::ranges::transform(line, &parts[2], Part).out;
  *end = Part("\n");
  [[maybe_unused]] const ssize_t written =
      writev(STDERR_FILENO, parts.data(), static_cast<int>(end + 1 - parts.data()));
}

void Tell(std::string_view text) noexcept {
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

int Print(std::string_view text) noexcept {
  const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  return whole && std::fflush(stdout) == 0 ? 0 : errno;
}

}  // namespace tools
