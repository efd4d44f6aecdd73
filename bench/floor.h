#pragma once

#include <cstddef>
#include <cstdint>

// The least that the same work can cost: what no library could leave out.
namespace floor_of {

// One command with a block that was prepared beforehand: open64, ioctl, close. Returns the result
// of the ioctl.
int Command(unsigned long code, void* output, uint32_t capacity);

// What a list getter must allocate and copy.
struct List {
  std::size_t header;  // bytes of the caller's header
  std::size_t prefix;  // bytes of the reply before its first record
  std::size_t record;  // bytes of one record
  uint32_t cap;        // records for which the reply buffer has room
  bool fitsEntries;    // the entries have room for the records of the reply alone
};

// The same allocations as getter and Release, one command, one plain copy of the reply into the
// entries, the same frees. Returns the number of records.
std::size_t ReadList(const List& list);

}  // namespace floor_of
