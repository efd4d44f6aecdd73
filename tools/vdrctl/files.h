#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "output.h"

namespace vdrctl {

// A file of the operator's could not be read or written.
class FileFailure : public std::runtime_error {
 public:
  FileFailure(const std::string& file, int error, std::string hint = "")
      : std::runtime_error(file), error_(error), hint_(std::move(hint)) {}

  int error() const { return error_; }
  // What may be done about it; empty when the error says it.
  const std::string& hint() const { return hint_; }

 private:
  int error_;
  std::string hint_;
};

// Reads the input of a command from a file, or from standard input for "-". Throws FileFailure, also
// when there is more of it than any command takes; no more than that is read to find out.
std::vector<uint8_t> ReadInput(const char* file);

// Puts a reply whose layout is the kernel's alone where the operator wants it: shown when `file` is
// NULL, the bytes as they stand on standard output for "-", else in that file. Throws FileFailure.
void PutReply(Output& out, const char* file, uint32_t length, std::span<const uint8_t> bytes);

}  // namespace vdrctl
