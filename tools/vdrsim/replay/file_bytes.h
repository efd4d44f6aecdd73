#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "transport/unique_fd.h"

namespace vdrsim {

// A file that may be too large to be held, read a byte after another, or anywhere.
class FileBytes {
 public:
  // Throws std::runtime_error.
  explicit FileBytes(const std::string& path);

  // The next byte, or kEnd. Throws std::runtime_error.
  static constexpr int kEnd = -1;
  int Peek() {
    return next_ < held_.size() || Fill() ? static_cast<unsigned char>(held_[next_]) : kEnd;
  }
  void Skip(size_t count = 1) { next_ += count; }

  // The next bytes, as many as are at hand; none at the end. Throws std::runtime_error.
  std::span<const char> AtHand() {
    return Peek() == kEnd ? std::span<const char>() : held_.subspan(next_);
  }

  // The offset of the next byte.
  uint64_t position() const { return start_ + next_; }

  // Reads from elsewhere, for use by several threads at once. Returns false unless all was read.
  bool ReadAt(uint64_t offset, std::span<char> bytes) const noexcept;

  const std::string& path() const { return path_; }

 private:
  bool Fill();

  std::string path_;
  UniqueFd file_;
  std::vector<char> room_;
  std::span<const char> held_{};
  uint64_t start_ = 0;  // of what is held
  size_t next_ = 0;
};

}  // namespace vdrsim
