#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "output.h"

namespace vdrctl {

// A file of the operator's could not be read or written.
class FileFailure : public std::runtime_error {
 public:
  FileFailure(const std::string& file, int error) : std::runtime_error(file), error_(error) {}

  int error() const { return error_; }

 private:
  int error_;
};

// Reads a whole file, or standard input for "-". Throws FileFailure, also when there are more than
// `most` bytes.
std::vector<uint8_t> ReadFile(const char* file, std::size_t most);

// Puts a reply whose layout is the kernel's alone where the operator wants it: shown when `file` is
// NULL, the bytes as they stand on standard output for "-", else in that file. Throws FileFailure.
void PutReply(Output& out, const char* file, uint32_t length, std::span<const uint8_t> bytes);

}  // namespace vdrctl
