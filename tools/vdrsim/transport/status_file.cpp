#include "status_file.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "proc_path.h"

namespace vdrsim {

StatusFile StatusFile::Of(pid_t process) {
  StatusFile status;
  status.file_ = UniqueFd(open(ProcPath("/proc/{}/status", process).c_str(), O_RDONLY | O_CLOEXEC));
  return status;
}

std::optional<uint64_t> StatusFile::Number(std::string_view label, int base) const {
  std::array<char, 4096> buffer;
  const ssize_t length = pread(file_.get(), buffer.data(), buffer.size(), 0);
  if (length <= 0) return std::nullopt;
  std::string_view text(buffer.data(), static_cast<size_t>(length));
  // The first line is the name, which the process itself chooses.
  text.remove_prefix(std::min(text.find('\n'), text.size()));
  const size_t line = text.find(label);
  if (line == std::string_view::npos) return std::nullopt;
  const size_t digits = text.find_first_not_of("\t ", line + label.size());
  if (digits == std::string_view::npos) return std::nullopt;
  uint64_t number = 0;
  const char* end = text.data() + text.size();
  if (std::from_chars(text.data() + digits, end, number, base).ec != std::errc{}) {
    return std::nullopt;
  }
  return number;
}

}  // namespace vdrsim
