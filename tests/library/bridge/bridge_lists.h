#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/contract.h"

// What every list of the bridges must do beyond the contract of its getter.
namespace bridge {

// A list at its cap, in which `decoded` makes the expected record of each record of the reply.
inline void ExpectRecords(const contract::ListGetter& getter,
                          const std::function<fake::Bytes(const fake::Bytes&)>& decoded) {
  const auto records = contract::DecodeAll(getter, wire::Patterns(getter.cap, getter.size));
  ASSERT_EQ(records.size(), getter.cap);
  for (std::size_t index = 0; index < getter.cap; ++index) {
    SCOPED_TRACE(index);
    const fake::Bytes source = wire::Pattern(getter.size, static_cast<unsigned>(index));
    ASSERT_BYTES(records[index], decoded(source));
  }
}

}  // namespace bridge
