#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeInstanceRows[] = {
    U64("qword0", 0),
    U32("word8", 8),
    Text("name", 12, 64),
    U32("word76", 76),
    U32("word80", 80),
    Text("text84", 84, 128),
    Text("text212", 212, 81),
    Skipped("skipped293", 293, 12),
    U32("word305", 305),
    U32("word309", 309),
    Numbers("qwords313", 313, 8, 10),
};

inline constexpr RecordLayout kBridgeInstanceRecord{
    "BridgeInstanceRecord", sizeof(BridgeInstanceRecord), kBridgeInstanceRows};
static_assert(Tiles(kBridgeInstanceRecord));

}  // namespace vdrzax
