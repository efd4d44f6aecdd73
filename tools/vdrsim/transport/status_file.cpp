#include "status_file.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "proc_path.h"

namespace vdrsim {

namespace {

// Of those that are looked for.
constexpr size_t kLongestLine = 256;

std::optional<uint64_t> NumberIn(std::string_view text, int base) {
  text.remove_prefix(std::min(text.find_first_not_of("\t "), text.size()));
  uint64_t number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return error == std::errc{} ? std::optional(number) : std::nullopt;
}

}  // namespace

StatusFile StatusFile::Of(pid_t process) {
  StatusFile status;
  status.file_ = UniqueFd(open(ProcPath("/proc/{}/status", process).c_str(), O_RDONLY | O_CLOEXEC));
  return status;
}

// A process can be of so many groups that what is looked for stands behind kilobytes of them.
std::optional<uint64_t> StatusFile::Number(std::string_view label, int base) const {
  std::array<char, 4096> buffer;
  for (off_t begin = 0;; begin += buffer.size() - kLongestLine) {
    const ssize_t length = pread(file_.get(), buffer.data(), buffer.size(), begin);
    if (length <= 0) return std::nullopt;
    std::string_view text(buffer.data(), static_cast<size_t>(length));
    // The first line is the name, which the process itself chooses.
    if (begin == 0) text.remove_prefix(std::min(text.find('\n'), text.size()));
    const size_t line = text.find(label);
    if (text.find('\n', line) != std::string_view::npos) {
      return NumberIn(text.substr(line + label.size()), base);
    }
    if (static_cast<size_t>(length) < buffer.size()) return std::nullopt;
  }
}

}  // namespace vdrsim
