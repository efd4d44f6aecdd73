#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgePortRows[] = {
    U64("qword0", 0),
    U32("word8", 8),
    U16("half12", 12),
    U32("word14", 14),
    Numbers("qwords18", 18, 8, 16),
};

inline constexpr RecordLayout kBridgePortRecord{"BridgePortRecord", sizeof(BridgePortRecord),
                                                kBridgePortRows};
static_assert(Tiles(kBridgePortRecord));

}  // namespace vdrzax
