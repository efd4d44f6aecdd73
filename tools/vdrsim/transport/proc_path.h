#pragma once

#include <fmt/format.h>

#include <array>

namespace vdrsim {

// The name of a file under /proc, made without an allocation.
class ProcPath {
 public:
  template <typename... Parts>
  explicit ProcPath(fmt::format_string<const Parts&...> form, const Parts&... parts) {
    *fmt::format_to_n(text_.data(), text_.size() - 1, form, parts...).out = '\0';
  }

  const char* c_str() const { return text_.data(); }

 private:
  std::array<char, 48> text_;
};

}  // namespace vdrsim
