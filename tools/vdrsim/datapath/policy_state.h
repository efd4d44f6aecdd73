#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <vector>

#include "datapath/table.h"

namespace vdrsim {

// What names a policy among those of its key.
struct PolicyArgs {
  uint32_t arg1 = 0;
  uint32_t arg2 = 0;

  auto operator<=>(const PolicyArgs&) const = default;
};

struct Policy {
  uint32_t arg3 = 0;

  bool operator==(const Policy&) const = default;
};

using Policies = Table<PolicyArgs, Policy>;

struct PolicyTable {
  std::string name{};

  bool operator==(const PolicyTable&) const = default;
};

// What names a LIF policy: all that its deletion sends.
struct LifPolicyKey {
  int32_t type = 0;
  uint32_t arg1 = 0;
  uint32_t arg2 = 0;
  uint32_t arg3 = 0;
  uint32_t flags = 0;
  std::string ifName{};

  auto operator<=>(const LifPolicyKey&) const = default;
};

struct LifPolicy {
  bool operator==(const LifPolicy&) const = default;
};

using LifPolicies = Table<LifPolicyKey, LifPolicy>;

// The policy tables that a LIF refers to.
struct PolicyTableRef {
  std::vector<std::array<uint64_t, 3>> entries{};

  bool operator==(const PolicyTableRef&) const = default;
};

}  // namespace vdrsim
