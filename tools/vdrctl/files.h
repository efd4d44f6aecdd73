#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vdrctl {

class Output;

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

// Reads a whole file, or standard input for "-". Throws FileFailure, also when there are more than
// `most` bytes, with `hint`; no more than that is read to find out.
std::vector<uint8_t> ReadFile(const std::string& file, std::size_t most, const std::string& hint);

// Writes a file, or standard output for "-". Throws FileFailure.
void WriteFile(const char* file, std::span<const uint8_t> bytes);

// Puts a reply whose layout is the kernel's alone where the operator wants it: shown when `file` is
// NULL, else in that file as it stands. Throws FileFailure.
void PutReply(Output& out, const char* file, uint64_t length, std::span<const uint8_t> bytes);

}  // namespace vdrctl
