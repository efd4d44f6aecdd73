#pragma once

#include <fmt/format.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace vdrsim {

// Why a run can't begin, in one line for the person who asked for it.
class StartFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] inline void FailStart(const char* what, int error, const char* remedy = nullptr) {
  std::string line = fmt::format("{}: {}", what, std::strerror(error));
  if (remedy) line += fmt::format(" ({})", remedy);
  throw StartFailure(line);
}

}  // namespace vdrsim
