#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>

#include "datapath/counters.h"
#include "datapath/table.h"
#include "requests/input.h"

namespace vdrsim {

struct FullSyncSaves {
  uint32_t count = 0;
  uint8_t lastFlag = 0;

  bool operator==(const FullSyncSaves&) const = default;
};

// A software RSS object. No command creates it: it is there from the first set on.
struct SoftRss {
  uint64_t qword0 = 0;
  uint32_t entryCount = 0;
  std::array<std::byte, 128> indirection{};

  Counters counters{};

  bool operator==(const SoftRss&) const = default;
};

// An address behind which virtual machines have others. It is there as long as it has items.
struct PublicAddress {
  MacAddress c{};
  uint32_t d = 0;
  std::set<uint32_t> items{};  // the b's

  bool IsEmpty() const { return items.empty(); }

  bool operator==(const PublicAddress&) const = default;
};

struct PublicAddresses {
  Table<uint32_t, PublicAddress> entries{};  // by a
  size_t itemCount = 0;                      // of all entries together

  bool operator==(const PublicAddresses&) const = default;
};

}  // namespace vdrsim
