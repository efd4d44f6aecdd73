#include "common/errno_name.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace tools {

namespace {

// Second names, of which the C library tells the first alone.
constexpr std::pair<std::string_view, int> kSecondNames[] = {
    {"EWOULDBLOCK", EWOULDBLOCK},
    {"EDEADLOCK", EDEADLOCK},
    {"ENOTSUP", ENOTSUP},
    {"EOPNOTSUPP", EOPNOTSUPP},
};

}  // namespace

std::string_view ErrnoName(int error) {
  const char* name = error > 0 ? strerrorname_np(error) : nullptr;
  return name ? name : std::string_view();
}

std::optional<int> ErrnoOf(std::string_view name) {
  if (name.empty()) return std::nullopt;
  for (int error = 1; error <= kHighestErrno; ++error) {
    if (ErrnoName(error) == name) return error;
  }
  for (const auto& [second, error] : kSecondNames) {
    if (name == second) return error;
  }
  return std::nullopt;
}

std::vector<std::string_view> ErrnoNames() {
  std::vector<std::string_view> names;
  for (int error = 1; error <= kHighestErrno; ++error) {
    if (const std::string_view name = ErrnoName(error); !name.empty()) names.push_back(name);
  }
  return names;
}

}  // namespace tools
