#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>

#include "parameter.h"

namespace vdrctl {

// What the operator gave for each parameter of a row: NULL or a text. Every value was found good
// before, and texts are free of escapes.
using Values = std::span<const char* const>;

// The same in one block. A file of commands may have millions of lines, and what lies apart has to be
// fetched between two commands, when whoever answers them falls asleep.
class Given {
 public:
  using Room = std::array<const char*, kMostParameters>;

  Given() = default;
  explicit Given(std::span<const std::optional<std::string>> values);

  // They live as long as the room and this.
  Values In(Room& room) const;

  // Asks the processor to have them at hand soon.
  void Fetch() const {
    for (std::size_t at = 0; at < block_.size(); at += 64) __builtin_prefetch(&block_[at]);
  }

 private:
  std::string block_{};
};

}  // namespace vdrctl
