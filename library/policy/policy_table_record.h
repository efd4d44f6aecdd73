#pragma once

#include <vdrzax/policy.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kPolicyTableRows[] = {
    U32("tableKey", 0),
    Text("tableName", 4, 64),
    U32("tableWord", 68),
};

inline constexpr RecordLayout kPolicyTableRecord{"PolicyTableRecord", sizeof(PolicyTableRecord),
                                                 kPolicyTableRows};
static_assert(Tiles(kPolicyTableRecord));

}  // namespace vdrzax
