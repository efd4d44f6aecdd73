#pragma once

#include <cerrno>
#include <optional>
#include <string>
#include <string_view>

#include "transport/start_failure.h"

// Calls that fail, and what is said of them.
namespace transport_test {

inline std::optional<int> Fail(int error) {
  errno = error;
  return -1;
}

// In the place of any call that gives a number.
inline auto FailsWith(int error) {
  return [error](auto...) { return Fail(error); };
}

// In the place of open: what has a name that ends so can't be opened.
inline auto FailsToOpen(std::string_view ending, int error) {
  return [=](const char* path, int) {
    return std::string_view(path).ends_with(ending) ? Fail(error) : std::nullopt;
  };
}

// Why a start fails, or nothing.
template <typename Start>
std::string StartFailureOf(const Start& start) {
  try {
    start();
  } catch (const vdrsim::StartFailure& failure) {
    return failure.what();
  }
  return "";
}

}  // namespace transport_test
