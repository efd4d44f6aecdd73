#pragma once

#include <cstddef>

#include "channel/record_layout.h"

// The layouts of the results of commands, which the protocol leaves to the datapath: 0, and what the
// object is known by.
namespace vdrsim {

// Of a policy, and, without arguments, of a policy table.
inline constexpr vdrzax::Field kPolicyResultRows[] = {
    vdrzax::U32("error", 0),
    vdrzax::U32("key", 4),
    vdrzax::U32("arg1", 8),
    vdrzax::U32("arg2", 12),
    vdrzax::Skipped("unused", 16, 72),
};
inline constexpr vdrzax::RecordLayout kPolicyResult{"PolicyResult", 88, kPolicyResultRows};
static_assert(Tiles(kPolicyResult));

inline constexpr vdrzax::Field kLifPolicyResultRows[] = {
    vdrzax::U32("error", 0),     vdrzax::U32("type", 4),  vdrzax::U32("arg1", 8),
    vdrzax::U32("arg2", 12),     vdrzax::U32("arg3", 16), vdrzax::U32("flags", 20),
    vdrzax::Text("lif", 24, 64),
};
inline constexpr vdrzax::RecordLayout kLifPolicyResult{"LifPolicyResult", 88, kLifPolicyResultRows};
static_assert(Tiles(kLifPolicyResult));

inline constexpr vdrzax::Field kRefResultRows[] = {
    vdrzax::U32("error", 0),
    vdrzax::Text("lif", 4, 64),
    vdrzax::Skipped("unused", 68, 20),
};
inline constexpr vdrzax::RecordLayout kRefResult{"RefResult", 88, kRefResultRows};
static_assert(Tiles(kRefResult));

}  // namespace vdrsim
