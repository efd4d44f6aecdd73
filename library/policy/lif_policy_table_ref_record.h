#pragma once

#include <vdrzax/policy.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kPolicyTableRefEntryRows[] = {
    U64("qword0", 0),
    U64("qword8", 8),
    U64("qword16", 16),
};

inline constexpr RecordLayout kPolicyTableRefEntry{
    "PolicyTableRefEntry", sizeof(PolicyTableRefEntry), kPolicyTableRefEntryRows};
static_assert(Tiles(kPolicyTableRefEntry));

inline constexpr Field kLifPolicyTableRefRows[] = {
    Text("refName", 0, 64),
    U16("refCount", 64),
    Entries("refEntries", 66, 20, kPolicyTableRefEntry, 64, 2),
};

inline constexpr RecordLayout kLifPolicyTableRef{"LifPolicyTableRef", sizeof(LifPolicyTableRef),
                                                 kLifPolicyTableRefRows};
static_assert(Tiles(kLifPolicyTableRef));

}  // namespace vdrzax
