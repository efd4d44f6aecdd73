#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "held_up_call.h"
#include "pinned_memory.h"

namespace vdrsim {

// Reads the memory of a process or thread. Returns false unless every byte was copied.
bool ReadMemory(pid_t thread, uint64_t address, std::span<std::byte> bytes);

// The memory of a caller that waits for its call to be answered. Pages that the caller itself can't
// read or write are refused here too.
//
// What is read may be another program's when the caller does not wait any more: ask it afterwards.
// What is written is not.
class CallerMemory {
 public:
  explicit CallerMemory(HeldUpCall& call) : call_(call) {}

  // Returns false unless every byte was copied; some may have been copied even then.
  bool Read(uint64_t address, std::span<std::byte> bytes) const;

  // Reads the terminated text at `address` into `buffer`, of a page at most. The result is empty
  // when the text does not fit with its terminator or can't be read.
  std::string_view ReadText(uint64_t address, std::span<char> buffer) const;

  // Writes up to kMostPatches in their order. Returns false unless every byte was written; some may
  // have been written even then.
  struct Patch {
    uint64_t address;
    std::span<const std::byte> bytes;
  };
  static constexpr size_t kMostPatches = 64;
  bool Write(std::span<const Patch> patches);
  bool Write(std::initializer_list<Patch> patches) {
    return Write(std::span(patches.begin(), patches.size()));
  }

  // Tells whether `length` bytes could be written now, by writing one byte of each page once more
  // as it is.
  bool IsWritable(uint64_t address, uint64_t length);

 private:
  void ChooseRoad();
  bool Rewrite(uint64_t address, uint64_t end);

  HeldUpCall& call_;
  bool roadIsChosen_ = false;
  std::optional<PinnedMemory> pinned_{};
};

}  // namespace vdrsim
