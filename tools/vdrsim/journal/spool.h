#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstring>
#include <deque>
#include <span>
#include <vector>

#include "journal/entry.h"
#include "transport/unique_fd.h"

namespace vdrsim {

// Entries on their way to somebody who may be slow: in memory up to a bound, beyond it in a file
// without a name. Without room for that file they stay in memory all the same. Outputs are left out.
// To be locked by whoever uses it.
class Spool {
 public:
  static constexpr size_t kMemory = size_t{16} << 20;

  explicit Spool(size_t memory = kMemory) : memory_(memory) {}

  // Copies an entry with its input. Throws std::bad_alloc, and holds what it held before.
  void Append(const Entry& entry);

  bool IsEmpty() const { return newest_.empty() && spilled_.empty(); }

  // Takes the entries that have been here longest, to be read by ForEachEntry; `batch` gives its room
  // for those to come. Returns false, and has lost them, when the file can't be read. Throws
  // std::bad_alloc, and holds what it held before.
  bool Take(std::vector<std::byte>& batch);

 private:
  void Spill();

  size_t memory_;
  std::vector<std::byte> newest_{};
  UniqueFd file_{};
  std::deque<size_t> spilled_{};  // the lengths of what is in the file
  off_t start_ = 0;
  off_t end_ = 0;
};

// Shows `use` the entries of a batch in their order.
template <typename Use>
void ForEachEntry(std::span<const std::byte> batch, const Use& use) {
  while (!batch.empty()) {
    Entry entry;
    std::memcpy(&entry, batch.data(), sizeof entry);
    entry.input = batch.subspan(sizeof entry, entry.input.size());
    use(static_cast<const Entry&>(entry));
    batch = batch.subspan(sizeof entry + entry.input.size());
  }
}

}  // namespace vdrsim
