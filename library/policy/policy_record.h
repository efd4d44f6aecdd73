#pragma once

#include <vdrzax/policy.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kPolicyRows[] = {
    U32("policyWord0", 0),  U32("policyWord1", 4),  U32("policyWord2", 8),
    U32("policyWord3", 12), U32("policyWord4", 16), U64("policyQword", 20),
};

inline constexpr RecordLayout kPolicyRecord{"PolicyRecord", sizeof(PolicyRecord), kPolicyRows};
static_assert(Tiles(kPolicyRecord));

}  // namespace vdrzax
