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

// Where a reply whose layout is the kernel's alone goes. It is made before the command is sent: one
// whose reply nobody could have is not carried out.
class ReplyFile {
 public:
  // NULL for no file, "-" for standard output. What is in the file stays as it is. Throws FileFailure.
  explicit ReplyFile(const char* file);
  ReplyFile(const ReplyFile&) = delete;
  ReplyFile& operator=(const ReplyFile&) = delete;
  // Takes away a file that was not there before and that nothing was written to.
  ~ReplyFile();

  explicit operator bool() const { return file_ >= 0; }

  // Makes this all that is in the file. Throws FileFailure.
  void Write(std::span<const uint8_t> bytes);

  // Writes the reply as it stands, or shows it where there is no file. Throws FileFailure.
  void Put(Output& out, uint64_t length, std::span<const uint8_t> bytes);

 private:
  std::string name_;
  int file_ = -1;
  bool isOwn_ = false;  // else it is standard output
  bool isNew_ = false;
};

}  // namespace vdrctl
