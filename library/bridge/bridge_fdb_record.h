#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeFdbRows[] = {
    U32("word0", 0), U16("half4", 4),   U16("half6", 6),   U24("triple8", 8),
    U8("flags", 11), U32("word12", 12), U32("word16", 16),
};

inline constexpr RecordLayout kBridgeFdbRecord{"BridgeFdbRecord", sizeof(BridgeFdbRecord),
                                               kBridgeFdbRows};
static_assert(Tiles(kBridgeFdbRecord));

}  // namespace vdrzax
